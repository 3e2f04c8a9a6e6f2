#pragma once

#include <sqlite3.h>

#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/sqlite/TableReader.h"
#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

/// A table of the store that is registered with a connection.
struct KnownTable {
  TableUse use;
  EvaluationState* state = nullptr;
  const TableReader* reader = nullptr;  ///< the reader that moved last, while it is open

  Type typeOf(jet::ColumnIndex column) const {
    return jetsql::typeOf(use.table->column(column).type);
  }
  /// The current row of that reader; null where there is none.
  const jet::Row* currentRow() const {
    return reader == nullptr || reader->atEnd() ? nullptr : &reader->row();
  }
};

/// Registers a table of the store with a connection as the virtual table `t<number>`. `state`
/// must outlive the connection. A table of that name is replaced; the returned one is valid until
/// then.
KnownTable& registerTable(sqlite3* connection, const TableUse& use, EvaluationState& state);

}  // namespace jetsql
