#include "platform/jetsql/Session.h"

#include <sqlite3.h>

#include <new>
#include <set>
#include <utility>

#include "platform/jet/engine/Database.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jetsql/Binder.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"
#include "platform/jetsql/RuleCondition.h"
#include "platform/jetsql/SqlFunction.h"
#include "platform/jetsql/TableModule.h"
#include "platform/jetsql/Translation.h"
#include "platform/runtime/CodePage.h"

namespace jetsql {
namespace {

/// Work that a statement may take before it counts as one that never ends; a session of the largest
/// stores takes a tenth of it.
constexpr std::int64_t kMostWork = 50'000'000;
constexpr int kStepsBetweenChecks = 10'000;
/// Longest single value, and the limits of SQLite's own programs.
constexpr int kLongestValue = 64'000'000;
constexpr int kLongestProgram = 2'000'000;

struct CloseConnection {
  void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
struct FinishStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPtr = std::unique_ptr<sqlite3_stmt, FinishStatement>;

int countSteps(void* data) {
  auto& budget = *static_cast<WorkBudget*>(data);
  budget.left -= kStepsBetweenChecks;
  return budget.left < 0 ? 1 : 0;
}

RawValue rawValue(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(statement, column)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_column_text16(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes16(statement, column)) / 2;
      return std::u16string_view(units, units == nullptr ? 0 : size);
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return std::span<const std::uint8_t>(bytes, bytes == nullptr ? 0 : size);
    }
    default:
      return std::monostate{};
  }
}

/// Counts the rows of a result.
struct RowCount final : public RowSink {
  void columns(std::vector<ResultColumn>) override {}
  void row(const ResultRow&) override { ++rows; }

  int rows = 0;
};

}  // namespace

/// SQLite's connection, and what its callbacks need.
struct Session::Connection {
  explicit Connection(jet::TextOrder order) {
    functions.order = order;
    sqlite3* opened = nullptr;
    const int status =
        sqlite3_open_v2(":memory:", &opened,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle.reset(opened);
    if (status != SQLITE_OK) throw std::bad_alloc();
    sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, kLongestValue);
    sqlite3_limit(opened, SQLITE_LIMIT_VDBE_OP, kLongestProgram);
    sqlite3_progress_handler(opened, kStepsBetweenChecks, countSteps, &functions.budget);
    // Texts stay as they are, in 16-bit units; sorting keeps to memory while it takes little.
    sqlite3_exec(opened, "PRAGMA encoding='UTF-16';PRAGMA cache_size=-16000", nullptr, nullptr,
                 nullptr);
  }

  /// Throws again what a callback kept, or the engine's error for what SQLite itself refuses.
  [[noreturn]] void fail(int status) {
    functions.failure.rethrow();
    if (status == SQLITE_NOMEM) throw std::bad_alloc();
    if (status == SQLITE_INTERRUPT || functions.budget.left < 0) throw error::tooComplex();
    const std::string words = sqlite3_errmsg(handle.get());
    if (words == "integer overflow") throw error::overflow();
    throw error::engine(u"Query is too complex (" + runtime::fromUtf8(words) + u").");
  }

  FunctionContext functions;
  std::set<std::string, std::less<>> registered;  ///< functions
  std::unique_ptr<sqlite3, CloseConnection> handle;
};

Session::Session(const std::filesystem::path& file, std::u16string_view shownPath,
                 std::u16string_view password)
    : database_(std::make_unique<jet::Database>(file, shownPath, password)) {}

Session::~Session() = default;

jet::Database& Session::database() {
  return *database_;
}

void Session::run(std::u16string_view statement, RowSink& sink) {
  translated(statement, "", &sink, nullptr);
}

std::vector<std::string> Session::plan(std::u16string_view statement) {
  std::vector<std::string> steps;
  translated(statement, "EXPLAIN QUERY PLAN ", nullptr, &steps);
  return steps;
}

void Session::translated(std::u16string_view statement, std::string_view prefix, RowSink* sink,
                         std::vector<std::string>* steps) {
  const jet::Reading untilDone(*database_);
  const std::unique_ptr<Query> query = Parser(statement).statement();
  execute(*query, prefix, sink, steps);
}

std::vector<runtime::Variant> Session::update(const jet::RowChange& change) {
  const auto holds = [&](const jet::ValidationRule& rule, const jet::NewRow& row) {
    RowCount broken;
    try {
      execute(*brokenBy(rule, row), "", &broken, nullptr);
    } catch (const runtime::RunTimeError& failure) {
      throw jet::error::ruleUnusable(rule.expression, rule.subject(), failure.text());
    }
    return broken.rows == 0;
  };
  return database_->update(change, holds);
}

/// Runs a parsed statement under the lock that is held.
void Session::execute(Query& query, std::string_view prefix, RowSink* sink,
                      std::vector<std::string>* steps) {
  Catalog catalog(*database_);
  Binder(catalog).bind(query);
  Translation translation = translate(query, database_->textOrder());

  if (!connection_) connection_ = std::make_unique<Connection>(database_->textOrder());
  Connection& connection = *connection_;
  sqlite3* handle = connection.handle.get();
  connection.functions.budget.left = kMostWork;
  for (const std::string& function : translation.functions) {
    if (!connection.registered.insert(function).second) continue;
    registerFunction(handle, function, connection.functions);
  }
  for (const TableUse& use : translation.tables) {
    registerTable(handle, use, connection.functions.failure, connection.functions.budget);
  }

  const std::string sql = std::string(prefix) + translation.sql;
  sqlite3_stmt* prepared = nullptr;
  int status =
      sqlite3_prepare_v2(handle, sql.c_str(), static_cast<int>(sql.size()), &prepared, nullptr);
  const StatementPtr owner(prepared);
  if (status != SQLITE_OK) connection.fail(status);
  for (std::size_t i = 0; i < translation.parameters.size(); ++i) {
    const Parameter& parameter = translation.parameters[i];
    const int place = static_cast<int>(i) + 1;
    if (parameter.isKey) {
      sqlite3_bind_blob64(prepared, place, parameter.key.data(), parameter.key.size(),
                          SQLITE_STATIC);
    } else {
      sqlite3_bind_text16(prepared, place, parameter.text.data(),
                          static_cast<int>(parameter.text.size() * 2), SQLITE_STATIC);
    }
  }

  const auto count = translation.columns.size();
  const auto sources = static_cast<std::size_t>(translation.sourceRows);
  if (sink != nullptr) sink->columns(std::move(translation.columns));
  std::vector<RawValue> values(count);
  std::vector<std::uint32_t> rows(sources);
  while ((status = sqlite3_step(prepared)) == SQLITE_ROW) {
    if (steps != nullptr) {
      constexpr int kDetail = 3;
      steps->emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(prepared, kDetail)));
      continue;
    }
    for (std::size_t i = 0; i < count; ++i) values[i] = rawValue(prepared, static_cast<int>(i));
    for (std::size_t i = 0; i < sources; ++i) {
      rows[i] =
          static_cast<std::uint32_t>(sqlite3_column_int64(prepared, static_cast<int>(count + i)));
    }
    sink->row({values, rows});
  }
  if (status != SQLITE_DONE) connection.fail(status);
}

}  // namespace jetsql
