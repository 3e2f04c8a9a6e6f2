#pragma once

#include <optional>
#include <vector>

#include "platform/jet/engine/Table.h"

namespace jetsql {

/// A condition on one column of a table, whose value is known only when the table is read.
struct Restriction {
  enum class Test : char { Equal = '=', IsNull = '0', Lower = '>', Upper = '<' };

  Test test = Test::Equal;
  jet::ColumnIndex column;
  int number = 0;  ///< the caller's own number for it
};

/// How a table is read: all of it, by a range of an index, or by looking up rows of equal values.
/// Rows that don't meet a restriction may be returned as well.
struct IndexPlan {
  std::optional<jet::IndexNumber> index = {};  ///< absent where none is used
  /// The restrictions that the plan uses: single values first, in the order of the index's columns.
  std::vector<Restriction> taken = {};
  bool isUnique = false;  ///< at most one row meets the restrictions
  double cost = 0;        ///< in rows of a scan
  double rows = 0;        ///< estimated number of rows that are returned
};

/// The cheapest way to read the table under these restrictions.
IndexPlan chooseIndex(const jet::Table& table, const std::vector<Restriction>& restrictions);

}  // namespace jetsql
