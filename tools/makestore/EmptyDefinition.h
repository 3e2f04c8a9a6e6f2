#pragma once

#include "makestore/PageSpace.h"
#include "makestore/StoreTable.h"
#include "makestore/TableWriter.h"
#include "platform/jet/format/TableDefinition.h"

namespace makestore {

/// The definition of a table that has no rows yet: columns with their offsets and slots, indexes
/// without a root, and empty usage maps.
jet::TableDefinition emptyDefinition(PageSpace& space, const StoreTable& table, TableKind kind);

}  // namespace makestore
