#pragma once

#include <cmath>
#include <limits>

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {

/// The number rounded to an integer of a type, a half to the even neighbour. Raises Overflow where
/// the type doesn't hold it.
template <class Integer>
Integer rounded(double number) {
  const double integer = std::nearbyint(number);
  if (!(integer >= std::numeric_limits<Integer>::min()) ||
      !(integer <= std::numeric_limits<Integer>::max())) {
    throw error::overflow();
  }
  return static_cast<Integer>(integer);
}

}  // namespace jetsql
