#pragma once

#include <optional>

#include "platform/jet/engine/IndexRange.h"
#include "platform/jet/engine/RowKey.h"
#include "platform/jet/format/Bytes.h"

namespace jet {

/// A range of an index's entries, by their bytes.
struct KeyRange {
  Bytes from;                   ///< the first entry is not less than this
  std::optional<Bytes> before;  ///< all entries are less than this; absent: to the end
  bool isEmpty = false;
};

/// The range of entries that contains every row of `range`.
KeyRange keyRange(const TableSource& source, const RowKey& key, const IndexRange& range);

}  // namespace jet
