#include "TestStore.h"

#include "platform/files/ProgramFolder.h"

namespace adodbtest {
namespace {

namespace fs = std::filesystem;

std::vector<ReferenceStore::Row> readTable(const fs::path& file) {
  const std::vector<std::string> lines = jettest::split(support::readFile(file).value(), '\n');
  const std::vector<std::string> names = jettest::split(lines.at(0), '\t');
  std::vector<ReferenceStore::Row> rows;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    std::vector<std::string> values = jettest::split(lines[i], '\t');
    values.resize(names.size());
    ReferenceStore::Row& row = rows.emplace_back();
    for (std::size_t k = 0; k < names.size(); ++k) row[names[k]] = values[k];
  }
  return rows;
}

}  // namespace

TestStore::TestStore(const makestore::ShopOptions& options) {
  fs::create_directories(file().parent_path());
  makestore::shopStore(options).write(file());
}

void TestStore::open(ADODB::Connection& connection) const {
  connection.Open(connectionString(files::programFolder() + u"\\Stores\\Demo\\Master.mdb"), u"",
                  u"", -1);
  connection.CursorLocation(ADODB::kUseClient);
}

makestore::ShopOptions smallShop() {
  makestore::ShopOptions options;
  options.slots = 40;
  options.products = 30;
  options.free.emplace();
  for (int id = 1; id <= 40; ++id) {
    if (id > 30) {
      options.free->insert(id);
      continue;
    }
    options.overrides[id].name = u"Item " + std::u16string{static_cast<char16_t>(u'0' + id / 10),
                                                           static_cast<char16_t>(u'0' + id % 10)};
  }
  return options;
}

std::u16string connectionString(std::u16string_view path, std::u16string_view password) {
  return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source= " + std::u16string(path) +
         u";Jet OLEDB:Database Password=" + std::u16string(password) +
         u";Persist Security Info=False";
}

std::vector<ReferenceStore> referenceStores() {
  std::vector<ReferenceStore> stores;
  for (const jettest::StoreFile& each : jettest::referenceStores()) {
    ReferenceStore& store = stores.emplace_back();
    store.file = each.path;
    for (const auto& file : fs::directory_iterator(each.path.parent_path())) {
      const std::string name = file.path().stem().string();
      if (name.starts_with("EXPECTED.")) store.tables[name.substr(9)] = readTable(file.path());
    }
  }
  return stores;
}

}  // namespace adodbtest
