#pragma once

#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

struct BoundSelect;

/// Writes the FROM clause of a SELECT. Must be called after the other clauses were written: the
/// sources get the columns that those use.
std::string writeFrom(StatementWriter& writer, const BoundSelect& select);

}  // namespace jetsql
