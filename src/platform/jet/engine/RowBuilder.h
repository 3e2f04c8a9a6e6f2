#pragma once

#include <optional>

#include "platform/jet/engine/Row.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/RowContent.h"

namespace jet {

/// The parts of a stored row, to be changed and encoded again: with room for all columns that the
/// table has now, long values as their heads. The fixed area keeps the bytes of deleted columns.
RowParts partsOf(const TableSource& source, const Row& row);

/// Sets the stored bytes of a column; absent for null. Not for Boolean.
void setStored(RowParts& parts, const ColumnDefinition& column, const std::optional<Bytes>& stored);
void setBoolean(RowParts& parts, const ColumnDefinition& column, bool value);

}  // namespace jet
