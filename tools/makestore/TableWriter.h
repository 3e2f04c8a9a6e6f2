#pragma once

#include <cstdint>

#include "makestore/PageSpace.h"
#include "makestore/StoreTable.h"

namespace makestore {

enum class TableKind { User, System };

/// Writes a table to the file: its definition to `definitionPage` (and more pages where it is
/// long), its rows, long values, indexes and usage maps. Lengthens texts of the fill column. Raises
/// std::invalid_argument for rows that break the table's own rules: a value of another type or
/// longer than its column, a duplicate in a unique index, a null in a required one, an indexed text
/// without a known key.
void writeTable(PageSpace& space, StoreTable& table, jet::PageNumber definitionPage,
                TableKind kind);

}  // namespace makestore
