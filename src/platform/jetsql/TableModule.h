#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>

#include "platform/jetsql/KeptFailure.h"
#include "platform/jetsql/Translation.h"

namespace jetsql {

/// What a statement may still cost, in units of about one step of SQLite's program. A statement
/// that would run for ever ends with the error for one that is too complex.
struct WorkBudget {
  std::int64_t left = 0;
};

/// Makes a table of the store known to a connection as the virtual table `t<number>`, with just the
/// columns that the statement uses. `failure` and `budget` must outlive the connection; a table of
/// that name is replaced.
void registerTable(sqlite3* connection, const TableUse& use, KeptFailure& failure,
                   WorkBudget& budget);

}  // namespace jetsql
