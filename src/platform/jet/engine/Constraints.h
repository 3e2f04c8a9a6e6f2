#pragma once

#include <span>
#include <vector>

#include "platform/jet/engine/ColumnValue.h"
#include "platform/jet/engine/RowKey.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/PropertyBlob.h"

namespace jet {

/// The entries of a changed row in one index, before and after the change.
struct KeyChange {
  IndexNumber index;
  bool hadEntry = false;          ///< the index has an entry for the old row
  std::optional<Bytes> oldEntry;  ///< absent where the old row's key is unknown
  std::optional<Bytes> newEntry;  ///< absent where the index doesn't hold the new row
};

/// Raises the engine's error where a column forbids its new value: null, or the empty text.
void checkValues(const TableSource& source, std::span<const PropertyBlock> properties,
                 std::span<const ColumnValue> values);

/// The changes to the indexes on the changed columns that a row's new bytes require. Raises where a
/// key can't be made safely, where an index requires a value, and where a unique index has the key
/// for another row.
std::vector<KeyChange> keyChanges(const TableSource& source, const Row& before, const Row& after,
                                  std::span<const ColumnValue> values);

}  // namespace jet
