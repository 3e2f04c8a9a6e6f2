#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/sqlite/IndexPlan.h"
#include "platform/jetsql/sqlite/RowLookup.h"

namespace jetsql {

/// A plan in the form that SQLite stores.
struct PlanCode {
  int number = 0;     ///< the index; -1 for a scan, lower for a lookup by a column
  std::string tests;  ///< the test of each value, in the order of the index's columns

  static PlanCode of(const IndexPlan& plan);
};

/// Reads a table by a plan, repeatedly with other values. Once values are looked up often, it no
/// longer searches the file but a hash table of all rows. Rows that don't meet the plan's
/// restrictions may be returned as well.
class TableReader {
 public:
  TableReader(const jet::Table& table, int planNumber, std::string_view tests);

  /// The column that each test's value is compared with, by its index.
  const std::vector<int>& columns() const { return columns_; }
  /// Starts again, at the first row for these values, one for each test.
  void start(const std::vector<runtime::Variant>& values);
  void next();
  bool atEnd() const { return row_ == nullptr; }
  const jet::Row& row() const { return *row_; }

 private:
  bool wantsLookup() const;
  jet::IndexRange rangeOf(const std::vector<runtime::Variant>& values) const;

  const jet::Table& table_;
  int index_;  ///< -1 without one
  std::string tests_;
  std::vector<int> columns_;
  bool isEquality_;  ///< nothing but single values is sought
  std::uint32_t starts_ = 0;
  std::unique_ptr<jet::Cursor> cursor_;
  jet::RowReader single_;
  std::optional<RowLookup> lookup_;
  std::uint32_t position_ = 0;  ///< in the lookup
  const jet::Row* row_ = nullptr;
};

}  // namespace jetsql
