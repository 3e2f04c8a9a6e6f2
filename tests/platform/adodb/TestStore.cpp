#include "TestStore.h"

#include "platform/files/ProgramFolder.h"

namespace adodbtest {

TestStore::TestStore(const makestore::ShopOptions& options) {
  std::filesystem::create_directories(file().parent_path());
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

}  // namespace adodbtest
