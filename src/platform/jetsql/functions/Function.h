#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/jetsql/functions/Type.h"

namespace jetsql {

class Aggregate;
class FunctionCall;

/// A function of the dialect, or a helper function that the SQL written for an operator calls.
struct Function {
  /// How a call of the function is written for SQLite.
  enum class Writing : std::uint8_t {
    Plain,  ///< a call of `target`, which this library registers with SQLite
    Iif,
    Switch,
    Choose,
    Fallback,   ///< Nz
    NullTest,   ///< IsNull
    Moment,     ///< Date, Time, Now: one value throughout a statement
    InText,     ///< InStr, whose start may come first
    Sum,        ///< Sum, Avg: `target` of SQLite, exact for amounts
    Aggregate,  ///< any other over many rows: `target`, of SQLite or registered with it
  };

  /// The type of the result: a fixed one, or that of the first argument.
  enum class Result : std::uint8_t { Fixed, AsFirst };
  /// Of a scalar function. Pass: where an argument is null, the result is null, without a call.
  /// Seen: the function is called with nulls, too.
  enum class Nulls : std::uint8_t { Pass, Seen };

  std::u16string_view name;  ///< in capitals; empty where only an operator needs it
  int fewest;                ///< number of arguments, at least
  int most;                  ///< and at most
  /// Kinds of the arguments in order, the last one for all that follow: `t` text, `n` number, `v`
  /// any value (an amount as a plain number), `k` any value (an amount in ten-thousandths), `c` a
  /// value to compare. See `writeArgument` in `writing/CallWriter.cpp`.
  std::string_view takes;
  Type type;
  std::string_view target;  ///< its name within SQLite
  /// For functions that we register, either this or `aggregate` is set.
  void (*scalar)(const FunctionCall&) = nullptr;
  Nulls nulls = Nulls::Pass;
  Result result = Result::Fixed;
  Writing writing = Writing::Plain;
  std::unique_ptr<Aggregate> (*aggregate)() = nullptr;

  bool isAggregate() const { return writing >= Writing::Sum; }
};

/// For the lists of functions.
inline constexpr auto kPass = Function::Nulls::Pass;
inline constexpr auto kSeen = Function::Nulls::Seen;
inline constexpr auto kFixed = Function::Result::Fixed;
inline constexpr auto kAsFirst = Function::Result::AsFirst;

/// The function of that name, ignoring letter case and a `$` at the end; null when there is none.
const Function* functionNamed(std::u16string_view name);
/// A function without a name in the dialect: only written statements call it, by its target.
constexpr Function helperFunction(std::string_view target, void (*scalar)(const FunctionCall&),
                                  Function::Nulls nulls = kPass) {
  return {u"", 0, 0, "", Type::Any, target, scalar, nulls};
}

/// The function of that name within SQLite; null when there is none.
const Function* functionWithTarget(std::string_view target);

}  // namespace jetsql
