#pragma once

#include <sqlite3.h>

#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/jetsql/sqlite/TableModule.h"
#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

/// An SQLite connection to the tables of one store, with the dialect's functions and the file's
/// sort order of texts.
class SqlConnection {
 public:
  explicit SqlConnection(jet::TextOrder order);
  SqlConnection(const SqlConnection&) = delete;
  SqlConnection& operator=(const SqlConnection&) = delete;

  /// Prepares a statement, which stays open until `finish` or the next one. Raises the
  /// engine's error for one that SQLite refuses.
  void prepare(const WrittenStatement& statement);
  /// Moves to the next row of the statement; false past the last one. Raises the engine's error for
  /// every failure, and for a statement that takes too long.
  bool step();
  /// Ends the statement: it reads the file no longer.
  void finish() { prepared_.reset(); }
  /// A value of the row.
  sqlite3_value* value(int column) const { return sqlite3_column_value(prepared_.get(), column); }
  /// The table of that number of the statement.
  const KnownTable& table(int number) const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };

  static int compareTexts(void* data, int size, const void* text, int otherSize,
                          const void* other) noexcept;
  [[noreturn]] void fail(int status);

  EvaluationState state_;
  std::array<std::u16string, 2> copies_;          ///< of texts that are compared
  std::set<std::string, std::less<>> functions_;  ///< registered with the connection
  std::vector<const KnownTable*> tables_;         ///< of the statement
  std::unique_ptr<sqlite3, Close> connection_;
  std::unique_ptr<sqlite3_stmt, Close> prepared_;
};

}  // namespace jetsql
