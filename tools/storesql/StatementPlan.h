#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jet {
class Database;
}

namespace storesql {

/// How SQLite runs a statement of the dialect.
struct StatementPlan {
  std::string sql;                         ///< the statement's text for SQLite
  std::vector<std::u16string> parameters;  ///< the values of ?1, ?2, … in it
  /// The tables in it: SQLite's name and the store's.
  std::vector<std::pair<std::string, std::string>> tables;
  /// The steps of SQLite's plan. A step that reads a table is "<table> by <index, scan or lookup>
  /// <column><test>…", with the tests =, 0 (null), > and < (bounds); all others are SQLite's text.
  std::vector<std::string> steps;
};

/// The plan of a statement on that store. Raises the engine's errors for a statement that can't be
/// run.
StatementPlan planOf(jet::Database& database, std::u16string_view statement);

}  // namespace storesql
