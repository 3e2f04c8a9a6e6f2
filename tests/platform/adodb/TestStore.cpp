#include "TestStore.h"

#include <fstream>

#include "platform/files/ProgramFolder.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace adodbtest {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> fields(const std::string& line) {
  std::vector<std::string> found;
  std::size_t begin = 0;
  for (std::size_t end = line.find('\t'); end != std::string::npos; end = line.find('\t', begin)) {
    found.push_back(line.substr(begin, end - begin));
    begin = end + 1;
  }
  found.push_back(line.substr(begin));
  return found;
}

std::vector<ReferenceStore::Row> readTable(const fs::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  const std::vector<std::string> names = fields(line);
  std::vector<ReferenceStore::Row> rows;
  while (std::getline(in, line)) {
    const std::vector<std::string> values = fields(line);
    ReferenceStore::Row row;
    for (std::size_t i = 0; i < names.size(); ++i) row[names[i]] = values[i];
    rows.push_back(row);
  }
  return rows;
}

}  // namespace

TestStore::TestStore(const makestore::ShopOrder& order) {
  fs::create_directories(file().parent_path());
  makestore::shopStore(order).write(file());
}

void TestStore::open(ADODB::Connection& connection) const {
  connection.Open(connectionString(files::programFolder() + u"\\Stores\\Demo\\Master.mdb"), u"",
                  u"", -1);
  connection.CursorLocation(ADODB::kUseClient);
}

makestore::ShopOrder smallShop() {
  makestore::ShopOrder order;
  order.slots = 40;
  order.products = 30;
  order.free.emplace();
  for (int id = 1; id <= 40; ++id) {
    if (id > 30) {
      order.free->insert(id);
      continue;
    }
    order.given[id].name = u"Item " + std::u16string{static_cast<char16_t>(u'0' + id / 10),
                                                     static_cast<char16_t>(u'0' + id % 10)};
  }
  return order;
}

std::u16string connectionString(std::u16string_view path, std::u16string_view password) {
  return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source= " + std::u16string(path) +
         u";Jet OLEDB:Database Password=" + std::u16string(password) +
         u";Persist Security Info=False";
}

std::string failureOf(const std::function<void()>& action) {
  try {
    action();
    return "";
  } catch (const runtime::RunTimeError& error) {
    return std::to_string(error.number()) + ": " + narrow(error.text());
  }
}

int failureNumber(const std::function<void()>& action) {
  const std::string failure = failureOf(action);
  return failure.empty() ? 0 : std::stoi(failure);
}

std::vector<ReferenceStore> referenceStores() {
  std::vector<ReferenceStore> stores;
  for (const auto& entry : fs::directory_iterator(fs::path(REFERENCE_STORES) / "stores")) {
    ReferenceStore store;
    for (const auto& file : fs::directory_iterator(entry.path())) {
      const std::string name = file.path().filename().string();
      if (name.starts_with("EXPECTED.")) {
        store.tables[name.substr(9, name.size() - 13)] = readTable(file.path());
      } else if (name.ends_with("db") || name.ends_with("DB")) {
        store.file = file.path();
      }
    }
    stores.push_back(store);
  }
  return stores;
}

std::string narrow(std::u16string_view text) {
  return runtime::toUtf8(text);
}
std::u16string wide(std::string_view utf8) {
  return runtime::fromUtf8(utf8);
}

}  // namespace adodbtest
