#pragma once

#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

struct BoundSelect;

/// The FROM clause in SQLite's SQL of a SELECT, whose other clauses are written already. Its
/// sources have the columns that those clauses use.
std::string writeFrom(StatementWriter& writer, const BoundSelect& select);

}  // namespace jetsql
