#pragma once

#include <compare>
#include <cstdint>

#include "platform/jet/format/Numbers.h"

namespace jet {

/// A row's position: its page and its slot there. The identity of a table's row is its original
/// slot, also after its body has moved to another page.
struct RowPointer {
  PageNumber page;
  SlotNumber slot;

  auto operator<=>(const RowPointer&) const = default;

  /// The form in definitions, long values and moved rows: page in the upper 24 bits.
  static constexpr RowPointer unpack(std::uint32_t packed) {
    return {PageNumber(packed >> 8), SlotNumber(static_cast<std::uint8_t>(packed & 0xFF))};
  }
  constexpr std::uint32_t pack() const { return (page << 8) | slot; }
};

using RowId = RowPointer;

}  // namespace jet
