#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/functions/KeptFailure.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {

/// The work that a statement may still do, in units of about one step of SQLite's program. A
/// statement that would run for ever ends with the error for one that is too complex.
struct WorkBudget {
  std::int64_t left = 0;

  /// Raises the error once nothing is left.
  void spend(std::int64_t work) {
    left -= work;
    if (left < 0) throw error::tooComplex();
  }
};

/// What the functions and tables of one SQLite connection share.
struct EvaluationState {
  jet::TextOrder order = jet::TextOrder::General4;
  KeptFailure failure;
  WorkBudget budget;
};

/// One call of a function: its arguments and its result, which is null until one is set. Numbers
/// and texts are converted to each other where possible; else the mismatch error is raised.
class FunctionCall {
 public:
  FunctionCall(sqlite3_context* context, int count, sqlite3_value** values, EvaluationState& state)
      : context_(context), count_(count), values_(values), state_(state) {}

  int count() const { return count_; }
  bool isNull(int argument) const { return kind(argument) == SQLITE_NULL; }
  bool isText(int argument) const { return kind(argument) == SQLITE_TEXT; }
  bool isBytes(int argument) const { return kind(argument) == SQLITE_BLOB; }
  /// True when any argument is null.
  bool hasNull() const;
  std::u16string text(int argument) const;
  double number(int argument) const;
  /// A number rounded half to even; the overflow error beyond 32 bits.
  std::int32_t integer(int argument) const;
  /// A date, or a text that is one.
  double date(int argument) const;
  std::string_view bytes(int argument) const;
  sqlite3_value* raw(int argument) const { return values_[argument]; }
  jet::TextOrder order() const { return state_.order; }
  sqlite3_context* context() const { return context_; }
  /// Counts work that grows with the length of texts; raises the error once the budget is spent.
  void spend(std::size_t units) const;

  void setText(std::u16string_view text) const;
  void setNumber(double number) const;
  void setInteger(std::int64_t number) const { sqlite3_result_int64(context_, number); }
  void setBoolean(bool truth) const { setInteger(truth ? -1 : 0); }
  void setValue(sqlite3_value* value) const { sqlite3_result_value(context_, value); }

 private:
  int kind(int argument) const { return sqlite3_value_type(values_[argument]); }

  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
  EvaluationState& state_;
};

}  // namespace jetsql
