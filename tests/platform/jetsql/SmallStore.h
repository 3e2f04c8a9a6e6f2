#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "makestore/StoreBuilder.h"
#include "platform/jet/StoreFiles.h"
#include "platform/jetsql/sqlite/Session.h"

namespace jetsqltest {

using jettest::narrow;
using jettest::wide;

/// A session on a store that was made for the test, in a folder that is deleted with it.
class SmallStore {
 public:
  explicit SmallStore(makestore::StoreBuilder builder);

  jetsql::Session& session() { return *session_; }
  /// The rows of a statement, a line each, values joined by " | ". Each value shows its type: texts
  /// in quotes, Currency as "$2.5", dates as "@2004-03-31 10:15:00", booleans as yes and no,
  /// doubles with a point or exponent. A letter follows a Byte ("5b"), an Integer ("5i"), a Single
  /// ("5.0f") and a Decimal ("5d"), but not a Long ("5").
  std::vector<std::string> rows(std::u16string_view statement);
  /// The same, sorted: for statements without an order.
  std::vector<std::string> sortedRows(std::u16string_view statement);
  /// The names of the columns, joined by commas.
  std::string columns(std::u16string_view statement);
  /// "number: text" of the error that the statement raises; empty where it raises none.
  std::string failure(std::u16string_view statement);
  /// The steps in which the statement would be run, as `storesql::planOf` returns them, joined by
  /// "; ".
  std::string plan(std::u16string_view statement);

 private:
  jettest::Scratch scratch_;
  std::unique_ptr<jetsql::Session> session_;
};

/// A little shop: Items, Depts, Codes (without an index), Amounts and Decimals (the largest ones),
/// Empty, and saved queries over them.
SmallStore& littleShop();

}  // namespace jetsqltest
