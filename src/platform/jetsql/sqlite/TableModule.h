#pragma once

#include <sqlite3.h>

#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/sqlite/TableReader.h"
#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

/// A table of the store that a connection knows.
struct KnownTable {
  TableUse use;
  FunctionContext* session = nullptr;
  const TableReader* reader = nullptr;  ///< the one that moved last, while it is open

  /// The row on which that reader stands; null where it stands on none.
  const jet::Row* currentRow() const {
    return reader == nullptr || reader->atEnd() ? nullptr : &reader->row();
  }
};

/// Makes a table of the store known to a connection as the virtual table `t<number>`. `session`
/// must outlive the connection. A table of that name is replaced; the one returned lives until
/// then.
KnownTable& registerTable(sqlite3* connection, const TableUse& use, FunctionContext& session);

}  // namespace jetsql
