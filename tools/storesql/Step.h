#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/runtime/Variant.h"

namespace storesql {

/// The store database of the command line.
struct Store {
  std::string path;      ///< as the operating system writes it
  std::string password;  ///< empty for none
};

/// One statement, and values that are written into the columns of its first row.
struct Step {
  std::u16string statement;
  std::vector<std::pair<std::u16string, runtime::Variant>> values;
};

/// Parses a line of a script: a statement and COLUMN=TEXT fields, separated by tabs.
Step stepOfLine(const std::string& line);
/// "COLUMN=TEXT", as a column and its value. Raises InvalidProcedureCall when there is no equals
/// sign.
std::pair<std::u16string, runtime::Variant> assignment(const std::string& text);

/// Runs one step in a session of its own. Prints the column names and the rows or, where it writes
/// values, the first row after the update. Raises the session's errors.
void run(const Store& store, const Step& step, std::ostream& out);

/// Prints how SQLite runs a statement: its text for SQLite, the parameters and tables that it
/// names, and the steps of SQLite's plan. Raises the engine's errors.
void explain(const Store& store, std::u16string_view statement, std::ostream& out);

}  // namespace storesql
