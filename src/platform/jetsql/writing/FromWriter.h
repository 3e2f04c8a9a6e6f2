#pragma once

#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

/// SQLite's FROM clause of a SELECT, whose other clauses are written already. Its sources have the
/// columns that they were asked for.
std::string writeFrom(StatementWriter& writer, const BoundSelect& select);

}  // namespace jetsql
