#pragma once

#include <cstdint>

#include "platform/runtime/Conversion.h"

namespace runtime {

/// A signed 16-bit integer whose arithmetic is checked: a result beyond -32768..32767 raises
/// Overflow and leaves the operands as they were.
class Integer16 {
 public:
  constexpr Integer16(std::int16_t value = 0) : value_(value) {}
  constexpr operator std::int16_t() const { return value_; }

  friend Integer16 operator+(Integer16 a, Integer16 b) { return toInteger(a.wide() + b.wide()); }
  friend Integer16 operator-(Integer16 a, Integer16 b) { return toInteger(a.wide() - b.wide()); }
  /// With a literal, which must be a 16-bit integer as well; Overflow for one that isn't.
  friend Integer16 operator+(Integer16 a, std::int32_t b) { return a + Integer16(toInteger(b)); }
  friend Integer16 operator-(Integer16 a, std::int32_t b) { return a - Integer16(toInteger(b)); }

 private:
  constexpr std::int32_t wide() const { return value_; }

  std::int16_t value_;
};

}  // namespace runtime
