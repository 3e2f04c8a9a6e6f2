#pragma once

#include <optional>
#include <vector>

#include "platform/runtime/Variant.h"

namespace jet {

/// The part of an index that a cursor walks. The cursor returns at least the rows that meet all
/// conditions. A bound that can't be converted to a key of the column's type (a text that is no
/// number, a character outside the order's tables) is left out, so the caller still tests each row.
struct IndexRange {
  /// Values of the leading columns; a null matches null. For a text column, Binary is a text's key
  /// as `Row::sortKey` returns it.
  std::vector<runtime::Variant> equal = {};
  /// Inclusive bounds on the next column's values; `lower` is the smaller value in a descending
  /// index too. With a bound or with `notNull`, nulls of that column are left out.
  std::optional<runtime::Variant> lower = {};
  std::optional<runtime::Variant> upper = {};
  bool notNull = false;
};

}  // namespace jet
