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
  const auto useBits = [&](std::uint64_t set, std::size_t at) {
    for (; set != 0; set &= set - 1)
      use(kByteBits * at + static_cast<std::size_t>(std::countr_zero(set)));
  };
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= bits.size(); at += sizeof(std::uint64_t))
    useBits(u64At(bits, at), at);
  for (; at < bits.size(); ++at) useBits(bits[at], at);
}

}  // namespace jet
