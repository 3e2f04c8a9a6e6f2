#include "platform/jetsql/sqlite/SqlConnection.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include "platform/jetsql/functions/SqlFunction.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/CodePage.h"

namespace jetsql {
namespace {

/// Work that a statement may do before it counts as one that never ends; the statements of a
/// session on the largest store take a tenth of it.
constexpr std::int64_t kMostWork = 50'000'000;
constexpr int kStepsBetweenChecks = 10'000;
/// Limits that are set in SQLite: bytes of one value, instructions of one statement's program.
constexpr int kLongestValue = 64'000'000;
constexpr int kLongestProgram = 2'000'000;

int countSteps(void* data) {
  auto& budget = *static_cast<WorkBudget*>(data);
  budget.left -= kStepsBetweenChecks;
  return budget.left < 0 ? 1 : 0;
}

/// A text as SQLite passes it. In a sorter's record it may begin at an odd address, and is copied
/// then.
std::u16string_view aligned(const void* text, int size, std::u16string& room) {
  const std::size_t count = static_cast<std::size_t>(size) / 2;
  if (reinterpret_cast<std::uintptr_t>(text) % alignof(char16_t) == 0) {
    return {static_cast<const char16_t*>(text), count};
  }
  room.resize(count);
  std::memcpy(room.data(), text, count * sizeof(char16_t));
  return room;
}

}  // namespace

int SqlConnection::compareTexts(void* data, int size, const void* text, int otherSize,
                                const void* other) noexcept {
  auto& connection = *static_cast<SqlConnection*>(data);
  int order = 0;
  guarded(connection.state_.failure, [&] {
    order = jet::compareText(connection.state_.order, aligned(text, size, connection.copies_[0]),
                             aligned(other, otherSize, connection.copies_[1]));
  });
  return order;
}

SqlConnection::SqlConnection(jet::TextOrder order) {
  state_.order = order;
  sqlite3* opened = nullptr;
  const int status =
      sqlite3_open_v2(":memory:", &opened,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  connection_.reset(opened);
  if (status != SQLITE_OK) throw std::bad_alloc();
  sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, kLongestValue);
  sqlite3_limit(opened, SQLITE_LIMIT_VDBE_OP, kLongestProgram);
  sqlite3_progress_handler(opened, kStepsBetweenChecks, countSteps, &state_.budget);
  // Texts stay in 16-bit units, which has to be set before anything else.
  sqlite3_exec(opened, "PRAGMA encoding='UTF-16'", nullptr, nullptr, nullptr);
  if (sqlite3_create_collation_v2(opened, kCollation, SQLITE_UTF16, this, compareTexts, nullptr) !=
      SQLITE_OK) {
    throw std::bad_alloc();
  }
}

/// Rethrows the exception that a callback stored, else throws the engine's error for SQLite's
/// status.
void SqlConnection::fail(int status) {
  prepared_.reset();
  state_.failure.rethrow();
  if (status == SQLITE_NOMEM) throw std::bad_alloc();
  if (status == SQLITE_INTERRUPT || state_.budget.left < 0) throw error::tooComplex();
  const std::string words = sqlite3_errmsg(connection_.get());
  if (words == "integer overflow") throw error::overflow();
  throw error::refused(runtime::fromUtf8(words));
}

void SqlConnection::prepare(const WrittenStatement& statement) {
  prepared_.reset();
  state_.budget.left = kMostWork;
  for (const std::string& function : statement.functions) {
    if (functions_.insert(function).second) registerFunction(connection_.get(), function, state_);
  }
  tables_.clear();
  for (const TableUse& use : statement.tables) {
    tables_.push_back(&registerTable(connection_.get(), use, state_));
  }
  sqlite3_stmt* prepared = nullptr;
  const int status = sqlite3_prepare_v2(connection_.get(), statement.sql.c_str(),
                                        static_cast<int>(statement.sql.size()), &prepared, nullptr);
  prepared_.reset(prepared);
  if (status != SQLITE_OK) fail(status);
  int number = 0;
  for (const std::u16string& text : statement.parameters) {
    sqlite3_bind_text16(prepared, ++number, text.c_str(), static_cast<int>(text.size() * 2),
                        SQLITE_TRANSIENT);
  }
}

bool SqlConnection::step() {
  const int status = sqlite3_step(prepared_.get());
  // A comparison that failed doesn't stop SQLite.
  state_.failure.rethrow();
  if (status != SQLITE_ROW && status != SQLITE_DONE) fail(status);
  return status == SQLITE_ROW;
}

const KnownTable& SqlConnection::table(int number) const {
  return **std::ranges::find(tables_, number,
                             [](const KnownTable* table) { return table->use.number; });
}

}  // namespace jetsql
