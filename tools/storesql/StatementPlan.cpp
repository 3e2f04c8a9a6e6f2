#include "storesql/StatementPlan.h"

#include <algorithm>

#include "platform/jet/engine/Database.h"
#include "platform/jetsql/binding/QueryBinder.h"
#include "platform/jetsql/sqlite/SqlConnection.h"
#include "platform/jetsql/sqlite/TableReader.h"
#include "platform/jetsql/syntax/QueryParser.h"
#include "platform/jetsql/writing/WrittenStatement.h"
#include "platform/runtime/CodePage.h"

namespace storesql {
namespace {

/// The column of EXPLAIN QUERY PLAN with the step's text.
constexpr int kDetail = 3;
/// Separates a virtual table's name from "<index>:<tests>" of `PlanCode` in the text of a step.
constexpr std::string_view kVirtualTable = " VIRTUAL TABLE INDEX ";

/// A step of SQLite's plan, with names in place of numbers where it reads a table: such a step
/// begins with "SCAN t<number> VIRTUAL TABLE INDEX <index>:<tests>".
std::string namedStep(const jetsql::WrittenStatement& statement, const std::string& step) {
  const std::size_t at = step.find(kVirtualTable);
  if (at == std::string::npos) return step;
  const int number = std::stoi(step.substr(step.rfind(' ', at - 1) + 2));
  std::string tests = step.substr(step.find(':', at) + 1);
  tests.resize(std::min(tests.find(' '), tests.size()));
  const jetsql::PlanCode code{std::stoi(step.substr(at + kVirtualTable.size())), tests};
  const jet::Table& table =
      *std::ranges::find(statement.tables, number, &jetsql::TableUse::number)->table;
  const std::optional<jet::IndexNumber> index = code.index();
  const std::vector<jet::ColumnIndex> columns = code.columns(table);
  std::string text = runtime::toUtf8(table.name()) + " by ";
  text += index ? runtime::toUtf8(table.index(*index).name) : columns.empty() ? "scan" : "lookup";
  for (std::size_t i = 0; i < columns.size(); ++i)
    text += " " + runtime::toUtf8(table.column(columns[i]).name) + tests[i];
  return text;
}

}  // namespace

StatementPlan planOf(jet::Database& database, std::u16string_view statement) {
  const jet::Database::Reading reading(database);  // holds the shared lock until the plan is made
  jetsql::WrittenStatement written =
      jetsql::writeStatement(jetsql::QueryBinder(database).bind(jetsql::parseStatement(statement)));
  StatementPlan plan{written.sql, written.parameters, {}, {}};
  for (const jetsql::TableUse& use : written.tables) {
    plan.tables.emplace_back("t" + std::to_string(use.number), runtime::toUtf8(use.table->name()));
  }
  jetsql::SqlConnection connection(database.textOrder());
  written.sql.insert(0, "EXPLAIN QUERY PLAN ");
  connection.prepare(written);
  while (connection.step()) {
    const auto* detail = sqlite3_value_text(connection.value(kDetail));
    plan.steps.push_back(namedStep(written, reinterpret_cast<const char*>(detail)));
  }
  return plan;
}

}  // namespace storesql
