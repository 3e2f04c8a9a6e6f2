#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "makestore/ShopStore.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"
#include "platform/jet/StoreFiles.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace adodbtest {

using jettest::kStorePassword;
using jettest::narrow;
using jettest::wide;
using support::errorNumberOf;
using support::failureOf;

/// A program folder with a store database in it: "Stores/Demo/MASTER.mdb".
class TestStore {
 public:
  explicit TestStore(const makestore::ShopOptions& options);

  const support::ProgramFolder& folder() const { return folder_; }
  std::filesystem::path file() const { return folder_.path() / "Stores" / "Demo" / "MASTER.mdb"; }
  /// Opens the store as the screens do, with client-side cursors.
  void open(ADODB::Connection& connection) const;

 private:
  support::ProgramFolder folder_;
};

/// A shop of 40 slots: 1 to 30 named "Item 01" and so on, the rest free.
makestore::ShopOptions smallShop();

/// The connection string for a path with backslashes, as the screens write it.
std::u16string connectionString(std::u16string_view path,
                                std::u16string_view password = kStorePassword);

}  // namespace adodbtest
