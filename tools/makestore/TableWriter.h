#pragma once

#include <cstdint>

#include "makestore/PageSpace.h"
#include "makestore/Table.h"

namespace makestore {

enum class TableKind { User, System };

/// Lays a table down in the file: its definition on `definitionPage` (and on more pages where it is
/// long), its rows, long values, indexes and usage maps. Texts of the fill column grow.
/// Raises std::invalid_argument for rows that break the table's own rules: a value of another kind
/// or longer than its column, a duplicate in a unique index, a null in a required one, an indexed
/// text without a known key.
void writeTable(PageSpace& space, Table& table, std::uint32_t definitionPage, TableKind kind);

}  // namespace makestore
