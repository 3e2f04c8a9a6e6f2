#pragma once

#include <cstdint>

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

}  // namespace jetsql
