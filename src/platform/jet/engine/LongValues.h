#pragma once

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/LongValue.h"

namespace jet {

/// The complete value of a memo or OLE column from the bytes that its row holds, assembled from its
/// pages where it is stored outside the row. Raises damage where pieces are missing or form a
/// cycle.
Bytes readLongValue(const TableSource& source, ByteView stored, const Location& location);

/// The row pointers of a value's pieces, in their order; none for one that is stored in its row.
std::vector<RowPointer> piecesOf(const TableSource& source, const LongValueHead& head,
                                 const Location& location);

}  // namespace jet
