#pragma once

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/engine/UsageMaps.h"

namespace jet {

/// Stages a memo or OLE value and gives what its row holds of it: all of a short one, the head of a
/// longer one, whose pieces go to pages of the column's own.
Bytes storeLongValue(PageChanges& changes, UsageMaps& maps, const TableSource& source,
                     const ColumnDefinition& column, ByteView value);

/// Stages the deletion of a value's pieces; `stored` is what the row held of it.
void dropLongValue(PageChanges& changes, UsageMaps& maps, const TableSource& source,
                   const ColumnDefinition& column, ByteView stored);

}  // namespace jet
