#pragma once

#include <cmath>
#include <limits>

namespace runtime {

/// The number rounded to an integer of a type, a half to the even neighbour. Raises the error that
/// `outOfRange` returns where the type doesn't hold it.
template <class Integer, class Error>
Integer rounded(double number, const Error& outOfRange) {
  // The default rounding mode rounds a half to the even neighbour.
  const double integer = std::nearbyint(number);
  if (!(integer >= std::numeric_limits<Integer>::min() &&
        integer <= std::numeric_limits<Integer>::max()))
    throw outOfRange();
  return static_cast<Integer>(integer);
}

}  // namespace runtime
