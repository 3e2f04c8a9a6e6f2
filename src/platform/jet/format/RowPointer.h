#pragma once

#include <compare>
#include <cstdint>

namespace jet {

/// A row's place: its page and its slot there. The identity of a table's row is its original slot,
/// also after its body has moved to another page.
struct RowPointer {
  std::uint32_t page = 0;
  std::uint8_t slot = 0;

  auto operator<=>(const RowPointer&) const = default;

  /// As it stands in definitions, long values and moved rows: page in the upper 24 bits.
  static constexpr RowPointer unpack(std::uint32_t packed) {
    return {packed >> 8, static_cast<std::uint8_t>(packed & 0xFF)};
  }
  constexpr std::uint32_t pack() const { return (page << 8) | slot; }
};

using RowId = RowPointer;

}  // namespace jet
