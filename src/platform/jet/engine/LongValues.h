#pragma once

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/LongValue.h"

namespace jet {

/// The full value of a memo or OLE column from what its row holds of it, put together from its
/// pages where it doesn't lie in the row. Raises damage where pieces are missing or lead in a
/// circle.
Bytes readLongValue(const TableSource& source, ByteView stored, const Place& place);

/// The row pointers of a value's pieces, in their order; none for one that lies in its row.
std::vector<RowPointer> piecesOf(const TableSource& source, const LongValueHead& head,
                                 const Place& place);

}  // namespace jet
