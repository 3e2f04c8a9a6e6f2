#pragma once

#include <optional>

#include "platform/jet/engine/Row.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/RowContent.h"

namespace jet {

/// The row as it stands, ready to be changed and written anew: with room for all columns that the
/// table has now, long values as their heads. The fixed area keeps what deleted columns left there.
RowParts partsOf(const TableSource& source, const Row& row);

/// Gives a column its stored bytes; absent for null. Not for Boolean.
void setStored(RowParts& parts, const ColumnDefinition& column, const std::optional<Bytes>& stored);
void setBoolean(RowParts& parts, const ColumnDefinition& column, bool value);

}  // namespace jet
