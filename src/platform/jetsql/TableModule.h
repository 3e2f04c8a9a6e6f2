#pragma once

#include <sqlite3.h>

#include "platform/jetsql/KeptFailure.h"
#include "platform/jetsql/Translation.h"
#include "platform/jetsql/WorkBudget.h"

namespace jetsql {

/// Makes a table of the store known to a connection as the virtual table `t<number>`, with just the
/// columns that the statement uses. `failure` and `budget` must outlive the connection; a table of
/// that name is replaced.
void registerTable(sqlite3* connection, const TableUse& use, KeptFailure& failure,
                   WorkBudget& budget);

}  // namespace jetsql
