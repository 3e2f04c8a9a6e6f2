#pragma once

#include <cstdint>
#include <string_view>

#include "platform/jetsql/functions/Type.h"

namespace jetsql {

/// A function of the dialect.
struct Function {
  /// How a call of it is written for SQLite.
  enum class Writing : std::uint8_t {
    Plain,   ///< a function of ours, `target`
    Choice,  ///< IIf
    Switch,
    Choose,
    Fallback,   ///< Nz
    NullTest,   ///< IsNull
    Moment,     ///< Date, Time, Now: one value all through a statement
    InText,     ///< InStr, whose start may come first
    Sum,        ///< Sum, Avg: `target` of SQLite, exact for amounts
    Aggregate,  ///< any other over many rows, `target` of SQLite or ours
  };

  /// What it returns: a value of a type, or of its first argument's.
  enum class Result : std::uint8_t { Fixed, AsFirst };

  std::u16string_view name;  ///< in capitals
  int fewest;
  int most;
  Writing writing;
  /// Kinds of arguments in turn, the last one standing for all that follow: `t` text, `n` number,
  /// `v` as it is, `k` kept (an amount in ten-thousandths), `c` compared.
  std::string_view takes;
  Type type;
  Result result;
  std::string_view target;  ///< its name within SQLite

  bool isAggregate() const { return writing >= Writing::Sum; }
};

/// The function of that name, letter case and a `$` at the end aside; null when there is none.
const Function* functionNamed(std::u16string_view name);

}  // namespace jetsql
