#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// What pages of long values hold as their owner: the letters LVAL, beyond all page numbers.
inline constexpr PageNumber kLongValueOwner{0x4C41564C};
/// Bytes that a slot takes.
inline constexpr std::size_t kSlotSize = 2;
/// Most slots that a page may have: a slot's number is one byte.
inline constexpr std::size_t kMostSlots = 255;

/// One slot of a data page: the bounds of its bytes, and their kind.
struct Slot {
  std::size_t offset = 0;
  std::size_t length = 0;
  bool pointer = false;  ///< the row moved: see MovedRow
  bool hidden = false;

  bool isDeleted() const { return pointer && hidden; }
  /// The body of a row that moved, reached only through its pointer.
  bool isBody() const { return hidden && !pointer; }
  /// A row with an identity: its bytes, or a pointer to them.
  bool isRow() const { return !hidden; }
};

/// How a slot is marked.
enum class SlotMark : std::uint16_t { Row = 0, Pointer = 0x4000, Body = 0x8000, Deleted = 0xC000 };

/// The row of a slot marked as a pointer.
struct MovedRow {
  static constexpr std::size_t kBody = 0;  ///< u32: row pointer of the body
};

/// A page of rows: table rows, usage maps, or pieces of long values. Rows fill the page from its
/// end downwards; the slots follow the header.
class DataPage {
 public:
  /// Raises damage where the page is no data page or its slots don't fit it.
  DataPage(const Layout& layout, ByteView page, const Location& location);

  /// Slots that a row pointer can name.
  std::size_t slotCount() const { return std::min(slotCount_, kMostSlots); }
  PageNumber owner() const { return PageNumber(u32At(page_, PageHead::kOwner)); }
  /// Raises damage where there is no such slot or its bytes aren't inside the page.
  Slot slot(SlotNumber number) const;
  ByteView bytes(const Slot& slot) const { return page_.subspan(slot.offset, slot.length); }
  ByteView bytes(SlotNumber number) const { return bytes(slot(number)); }
  const Location& location() const { return location_; }

 private:
  friend class DataPageEditor;

  std::size_t rawSlot(SlotNumber number) const;

  const Layout* layout_;
  ByteView page_;
  Location location_;
  std::size_t slotCount_;
};

/// Changes a data page's rows in memory. Slots are never renumbered.
class DataPageEditor : public DataPage {
 public:
  /// Raises damage where any slot is wrong.
  DataPageEditor(const Layout& layout, ByteSpan page, const Location& location);

  /// A data page without rows.
  static Bytes newPage(const Layout& layout, PageNumber owner);

  /// The contiguous gap between slots and rows.
  std::size_t freeBytes() const;
  /// Bytes of deleted rows that `squeeze` would free.
  std::size_t deadBytes() const;
  /// True when a new row of that length finds room, its slot included.
  bool hasRoomFor(std::size_t length) const;

  /// Replaces the bytes and the mark of the slot, sliding the rows below it; false, with nothing
  /// changed, when the page has no room.
  bool replace(SlotNumber number, ByteView row, SlotMark mark);
  /// Adds a row, in the slot of a deleted row without bytes where there is one; absent when the
  /// page has no room.
  std::optional<SlotNumber> add(ByteView row, SlotMark mark);
  /// Marks a slot's row deleted; its bytes stay until they are squeezed out.
  void markDeleted(SlotNumber number);
  /// Squeezes the bytes of deleted rows out.
  void squeeze();

 private:
  void resizeSlot(SlotNumber number, std::size_t length);
  void setSlot(SlotNumber number, std::size_t offset, SlotMark mark);
  std::size_t lowestRow() const;
  std::optional<SlotNumber> emptySlot() const;
  void updateFreeBytes();

  ByteSpan bytes_;
};

}  // namespace jet
