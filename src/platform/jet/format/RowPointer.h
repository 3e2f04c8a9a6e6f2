#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Numbers.h"

namespace jet {

/// A slot of one of the file's data pages.
template <class Tag>
struct SlotAddress {
  /// Bytes that one takes in the file.
  static constexpr std::size_t kSize = 4;
  // Bits of the form in the file: the slot in the low ones, the page in the others.
  static constexpr unsigned kSlotBits = 8;
  static constexpr std::uint32_t kSlotMask = 0xFF;

  PageNumber page;
  SlotNumber slot;

  auto operator<=>(const SlotAddress&) const = default;

  /// The form in the file.
  static constexpr SlotAddress unpack(std::uint32_t packed) {
    return {PageNumber(packed >> kSlotBits), SlotNumber(packed & kSlotMask)};
  }
  constexpr std::uint32_t pack() const { return page.value() << kSlotBits | slot.value(); }
};

/// Leads to the bytes in a slot: a usage map, a piece of a long value, the body of a moved row.
using RowPointer = SlotAddress<struct RowPointerTag>;
/// The identity of a table's row: its original slot, also after its body has moved to another page.
using RowId = SlotAddress<struct RowIdTag>;

inline RowPointer rowPointerAt(ByteView bytes, std::size_t at) {
  return RowPointer::unpack(u32At(bytes, at));
}
inline void putRowPointer(ByteSpan bytes, std::size_t at, RowPointer pointer) {
  putU32(bytes, at, pointer.pack());
}

}  // namespace jet
