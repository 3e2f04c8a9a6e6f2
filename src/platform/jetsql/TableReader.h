#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/IndexPlan.h"
#include "platform/jetsql/RowLookup.h"
#include "platform/jetsql/SoughtValue.h"

namespace jetsql {

/// Reads a table along a plan, again and again with other values. A value that is looked up often
/// is no longer sought in the file but in a table of all rows by that value.
class TableReader {
 public:
  explicit TableReader(const jet::Table& table);

  /// Begins anew, at the first row. `values` belong to the plan's restrictions in their order.
  void start(const IndexPlan& plan, std::span<const SoughtValue> values);
  void next();
  bool atEnd() const { return row_ == nullptr; }
  const jet::Row& row() const { return *row_; }
  /// Tells the rows apart that were read one after the other.
  std::uint64_t rowsRead() const { return rowsRead_; }

 private:
  void setPlan(const IndexPlan& plan);
  bool setSought(std::span<const SoughtValue> values);
  bool makeRange(std::span<const SoughtValue> values, jet::IndexRange& range) const;
  void startLookup(std::span<const SoughtValue> values);
  bool wantsLookup() const;
  void fillLookup();
  bool nextMatch();
  bool advance();
  void nextInGroup();
  bool readGroup();
  bool matches(const jet::Row& row);
  bool identify(const jet::Row& row, std::string& identity) const;
  bool appendOwn(const jet::Row& row, const Demand& column, std::string& identity) const;
  std::string sortKey(const jet::Row& row, std::span<const Demand> columns) const;

  const jet::Table& table_;
  IndexPlan plan_;
  std::uint32_t starts_ = 0;  ///< along this plan
  std::unique_ptr<jet::Cursor> cursor_;
  jet::RowReader single_;
  const jet::Row* row_ = nullptr;
  std::uint64_t rowsRead_ = 0;

  /// Identity of the values that are sought, which columns they are of, and a row's own.
  std::string sought_;
  std::vector<Demand> soughtColumns_;
  std::string own_;
  bool isNumber_ = false;     ///< one number and nothing else is sought
  bool testsCursor_ = false;  ///< rows of a cursor must be compared with what is sought

  std::optional<RowLookup> lookup_;
  std::uint32_t lookupPlace_ = 0;

  /// Rows of one index key, put in order by the ties.
  std::vector<Demand> indexColumns_;
  std::vector<jet::RowId> group_;
  std::size_t groupPlace_ = 0;
  jet::Row held_;         ///< the one row of a group that lists none
  bool isAhead_ = false;  ///< the cursor stands on the first row behind the group
  std::string aheadKey_;  ///< index key of that row
};

}  // namespace jetsql
