#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/KeptFailure.h"
#include "platform/jetsql/WorkBudget.h"

namespace jetsql {

/// What the dialect's functions need of their session.
struct FunctionContext {
  jet::TextOrder order = jet::TextOrder::General4;
  KeptFailure failure;
  WorkBudget budget;
};

/// One call of a function: its arguments and its result, which is null until one is set. Numbers
/// stand for texts and texts for numbers where they can; where not, the mismatch error is raised.
class FunctionCall {
 public:
  FunctionCall(sqlite3_context* context, int count, sqlite3_value** values,
               FunctionContext& session)
      : context_(context), count_(count), values_(values), session_(session) {}

  int count() const { return count_; }
  bool isNull(int argument) const;
  bool isText(int argument) const;
  bool isBytes(int argument) const;
  /// True when any argument is null.
  bool hasNull() const;
  std::u16string text(int argument) const;
  double number(int argument) const;
  /// A number rounded half to even; the overflow error beyond 32 bits.
  std::int32_t whole(int argument) const;
  /// A date, or a text that gives one.
  double date(int argument) const;
  std::string_view bytes(int argument) const;
  sqlite3_value* raw(int argument) const { return values_[argument]; }
  jet::TextOrder order() const { return session_.order; }
  sqlite3_context* context() const { return context_; }
  /// Counts work that grows with the length of texts; raises the error once it is too much.
  void spend(std::size_t units) const;

  void giveText(std::u16string_view text) const;
  void giveNumber(double number) const;
  void giveWhole(std::int64_t number) const;
  void giveBytes(std::string_view bytes) const;
  void giveBoolean(bool truth) const { giveWhole(truth ? -1 : 0); }
  void giveSame(sqlite3_value* value) const { sqlite3_result_value(context_, value); }

 private:
  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
  FunctionContext& session_;
};

/// A function over the rows of a group.
class Aggregate {
 public:
  virtual ~Aggregate() = default;
  virtual void step(const FunctionCall& call) = 0;
  virtual void finish(const FunctionCall& call) = 0;
};

/// A function of ours within SQLite: one of the two is set.
struct SqlFunction {
  std::string_view name;
  void (*scalar)(const FunctionCall&) = nullptr;
  std::unique_ptr<Aggregate> (*aggregate)() = nullptr;
};

std::span<const SqlFunction> comparingFunctions();
std::span<const SqlFunction> textFunctions();
std::span<const SqlFunction> conversionFunctions();
std::span<const SqlFunction> numberFunctions();
std::span<const SqlFunction> dateFunctions();
std::span<const SqlFunction> aggregateFunctions();

/// Makes a function known to a connection, which must be closed before `session` ends.
void registerFunction(sqlite3* connection, std::string_view name, FunctionContext& session);

/// A number as `&` writes it.
std::u16string numberText(sqlite3_value* value);
/// A key as it compares: of a text its key, of anything else itself; true for a text.
bool sortKey(jet::TextOrder order, sqlite3_value* value, std::string& key);

}  // namespace jetsql
