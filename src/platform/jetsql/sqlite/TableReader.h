#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/sqlite/IndexPlan.h"
#include "platform/jetsql/sqlite/RowLookup.h"

namespace jetsql {

/// A plan in the form that SQLite stores.
struct PlanCode {
  int number = 0;     ///< the index; -1 for a scan, lower for a lookup by a column
  std::string tests;  ///< the test of each value, in the order of the index's columns

  bool operator==(const PlanCode&) const = default;

  static PlanCode of(const IndexPlan& plan);
  /// Absent for a scan and for a lookup.
  std::optional<jet::IndexNumber> index() const;
  /// The column that each test's value is compared with.
  std::vector<jet::ColumnIndex> columns(const jet::Table& table) const;
};

/// Reads a table by a plan, repeatedly with other values. Once values are looked up often, it no
/// longer searches the file but a hash table of all rows. Rows that don't meet the plan's
/// restrictions may be returned as well.
class TableReader {
 public:
  TableReader(const jet::Table& table, const PlanCode& plan);

  /// The column that each test's value is compared with.
  const std::vector<jet::ColumnIndex>& columns() const { return columns_; }
  /// Starts again, at the first row for these values, one for each test.
  void start(const std::vector<runtime::Variant>& values);
  void next();
  bool atEnd() const { return row_ == nullptr; }
  const jet::Row& row() const { return *row_; }

 private:
  bool wantsLookup() const;
  jet::IndexRange rangeOf(const std::vector<runtime::Variant>& values) const;

  const jet::Table& table_;
  std::optional<jet::IndexNumber> index_;
  std::string tests_;
  std::vector<jet::ColumnIndex> columns_;
  bool isEquality_;  ///< all tests are equalities
  std::uint32_t starts_ = 0;
  std::unique_ptr<jet::Cursor> cursor_;
  jet::RowReader single_;
  std::optional<RowLookup> lookup_;
  std::uint32_t position_ = 0;  ///< in the lookup
  const jet::Row* row_ = nullptr;
};

}  // namespace jetsql
