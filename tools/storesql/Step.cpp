#include "storesql/Step.h"

#include <filesystem>
#include <ostream>

#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"
#include "platform/jetsql/sqlite/Session.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "storesql/PrintedValue.h"
#include "storesql/StatementPlan.h"

namespace storesql {
namespace {

constexpr int kKeyset = 1;
constexpr int kPessimistic = 2;
constexpr int kUnspecified = -1;

std::string quoted(const std::string& value) {
  std::string result = "\"";
  for (const char c : value) {
    result += c;
    if (c == '"') result += c;
  }
  return result + "\"";
}

std::string absolutePath(const Store& store) {
  return std::filesystem::absolute(store.path).lexically_normal().string();
}

std::u16string connectionString(const Store& store) {
  return runtime::fromUtf8(
      "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + quoted(absolutePath(store)) +
      ";Jet OLEDB:Database Password=" + quoted(store.password));
}

void printNames(const ADODB::Recordset& rows, std::ostream& out) {
  for (int i = 0; i < rows.FieldCount(); ++i) {
    out << (i == 0 ? "" : "\t") << escaped(rows.FieldName(i));
  }
  out << '\n';
}

void printRow(ADODB::Recordset& rows, std::ostream& out) {
  for (int i = 0; i < rows.FieldCount(); ++i) {
    out << (i == 0 ? "" : "\t") << printed(rows.FieldAt(i).value());
  }
  out << '\n';
}

}  // namespace

Step stepOfLine(const std::string& line) {
  Step step;
  std::size_t end = line.find('\t');
  step.statement = unescaped(line.substr(0, end)).toText();
  while (end != std::string::npos) {
    const std::size_t begin = end + 1;
    end = line.find('\t', begin);
    step.values.push_back(assignment(line.substr(begin, end - begin)));
  }
  return step;
}

std::pair<std::u16string, runtime::Variant> assignment(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    throw runtime::RunTimeError(5, u"Not COLUMN=TEXT: " + runtime::fromUtf8(text));
  }
  return {runtime::fromUtf8(text.substr(0, equals)), unescaped(text.substr(equals + 1))};
}

void run(const Store& store, const Step& step, std::ostream& out) {
  ADODB::Connection connection;
  connection.Open(connectionString(store), u"", u"", kUnspecified);
  connection.CursorLocation(ADODB::kUseClient);
  ADODB::Recordset rows;
  rows.Open(step.statement, connection, kKeyset, kPessimistic, kUnspecified);
  printNames(rows, out);
  if (step.values.empty()) {
    for (; !rows.Eof(); rows.MoveNext()) printRow(rows, out);
  } else {
    for (const auto& [column, value] : step.values) rows.Fields(column).value(value);
    rows.Update();
    printRow(rows, out);
  }
  rows.Close();
  connection.Close();
}

void explain(const Store& store, std::u16string_view statement, std::ostream& out) {
  const std::string path = absolutePath(store);
  jetsql::Session session(path, runtime::fromUtf8(path), runtime::fromUtf8(store.password));
  const StatementPlan plan = planOf(session.database(), statement);
  out << plan.sql << '\n';
  for (std::size_t i = 0; i < plan.parameters.size(); ++i) {
    out << '?' << i + 1 << " = " << escaped(plan.parameters[i]) << '\n';
  }
  for (const auto& [name, table] : plan.tables) out << name << " = " << table << '\n';
  for (const std::string& step : plan.steps) out << step << '\n';
}

}  // namespace storesql
