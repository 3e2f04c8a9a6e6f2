#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "platform/jet/format/Bytes.h"

namespace jet {

inline constexpr std::size_t kByteBits = std::numeric_limits<std::uint8_t>::digits;

// Bitmaps: bit n is in byte n / 8, the low bit first.

inline bool bitOf(ByteView bits, std::size_t number) {
  return (bits[number / kByteBits] >> (number % kByteBits) & 1) != 0;
}
inline void setBit(ByteSpan bits, std::size_t number, bool value) {
  const unsigned mask = 1U << (number % kByteBits);
  const unsigned byte = bits[number / kByteBits];
  bits[number / kByteBits] = static_cast<std::uint8_t>(value ? byte | mask : byte & ~mask);
}
/// Bytes of a bitmap of that many bits.
constexpr std::size_t bytesOfBits(std::size_t count) {
  return (count + kByteBits - 1) / kByteBits;
}

/// Calls `use` with the number of each bit that is set, in ascending order.
template <class Use>
void forEachSetBit(ByteView bits, Use use) {
  for (std::size_t i = 0; i < bits.size(); ++i)
    for (unsigned byte = bits[i]; byte != 0; byte &= byte - 1)
      use(kByteBits * i + static_cast<std::size_t>(std::countr_zero(byte)));
}

}  // namespace jet
