#include "platform/jet/format/DataPage.h"

#include <algorithm>

namespace jet {
namespace {

/// The parts of a slot: the offset of its row, and its SlotMark.
constexpr std::size_t kSlotOffset = 0x1FFF;
constexpr std::size_t kSlotMark = 0xC000;

SlotMark markOf(std::size_t raw) {
  return static_cast<SlotMark>(raw & kSlotMark);
}

SlotNumber slotNumber(std::size_t index) {
  return SlotNumber(static_cast<std::uint8_t>(index));
}

}  // namespace

DataPage::DataPage(const Layout& layout, ByteView page, const Location& location)
    : layout_(&layout),
      page_(page),
      location_(location),
      slotCount_(u16At(page, layout.dataSlotCount)) {
  if (page[PageHead::kType] != static_cast<std::uint8_t>(PageType::Data))
    raiseDamaged(location, u"it is no data page");
  if (layout.dataSlots + 2 * slotCount_ > layout.pageSize)
    raiseDamaged(location, u"it claims more rows than it can hold",
                 {layout.dataSlots, 2 * slotCount_, layout.pageSize});
}

std::size_t DataPage::offsetOf(std::size_t number) const {
  return u16At(page_, layout_->dataSlots + 2 * number) & kSlotOffset;
}

Slot DataPage::slot(std::size_t number) const {
  if (number >= slotCount_)
    raiseDamaged(location_, u"a row is looked for that it doesn't have",
                 {layout_->dataSlots + 2 * number, 2, layout_->dataSlots + 2 * slotCount_});
  const std::size_t raw = u16At(page_, layout_->dataSlots + 2 * number);
  const std::size_t offset = raw & kSlotOffset;
  const std::size_t end = number == 0 ? layout_->pageSize : offsetOf(number - 1);
  if (offset > end || end > layout_->pageSize || offset < layout_->dataSlots + 2 * slotCount_)
    raiseDamaged(location_, u"a row lies outside its bounds",
                 {offset, end - std::min(offset, end), std::min(end, layout_->pageSize)});
  return {.offset = offset,
          .length = end - offset,
          .pointer = (raw & static_cast<std::size_t>(SlotMark::Pointer)) != 0,
          .hidden = (raw & static_cast<std::size_t>(SlotMark::Body)) != 0};
}

DataPageEditor::DataPageEditor(const Layout& layout, ByteSpan page, const Location& location)
    : layout_(&layout), page_(page), slotCount_(0) {
  const DataPage checked(layout, page, location);
  slotCount_ = checked.slotCount();
  for (std::size_t i = 0; i < slotCount_; ++i) checked.slot(i);
}

Bytes DataPageEditor::newPage(const Layout& layout, std::uint32_t owner) {
  Bytes page(layout.pageSize);
  page[PageHead::kType] = static_cast<std::uint8_t>(PageType::Data);
  page[PageHead::kMark] = PageHead::kLive;
  putU16(page, PageHead::kFreeBytes, layout.pageSize - layout.dataSlots);
  putU32(page, PageHead::kOwner, owner);
  return page;
}

std::size_t DataPageEditor::rawSlot(std::size_t number) const {
  return u16At(page_, layout_->dataSlots + 2 * number);
}

void DataPageEditor::setSlot(SlotNumber number, std::size_t offset, SlotMark mark) {
  putU16(page_, layout_->dataSlots + 2 * number, offset | static_cast<std::size_t>(mark));
}

Slot DataPageEditor::slot(std::size_t number) const {
  return DataPage(*layout_, page_, {}).slot(number);
}

ByteView DataPageEditor::bytes(std::size_t number) const {
  const Slot found = slot(number);
  return page_.subspan(found.offset, found.length);
}

std::size_t DataPageEditor::freeBytes() const {
  const std::size_t lowest =
      slotCount_ == 0 ? layout_->pageSize : rawSlot(slotCount_ - 1) & kSlotOffset;
  return lowest - (layout_->dataSlots + 2 * slotCount_);
}

void DataPageEditor::updateFreeBytes() {
  putU16(page_, PageHead::kFreeBytes, freeBytes());
}

std::size_t DataPageEditor::deadBytes() const {
  std::size_t dead = 0;
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(i); each.isDeleted()) dead += each.length;
  return dead;
}

void DataPageEditor::resize(SlotNumber number, std::size_t length) {
  const Slot old = slot(number);
  const std::size_t lowest = rawSlot(slotCount_ - 1) & kSlotOffset;
  const std::size_t end = old.offset + old.length;
  const std::size_t offset = end - length;
  // The rows of the higher slots lie below this one: they slide by the difference as one block.
  putBytes(page_, lowest + offset - old.offset, page_.subspan(lowest, old.offset - lowest));
  for (std::size_t i = number + std::size_t{1}; i < slotCount_; ++i) {
    const std::size_t raw = rawSlot(i);
    setSlot(slotNumber(i), (raw & kSlotOffset) + offset - old.offset, markOf(raw));
  }
  setSlot(number, offset, markOf(rawSlot(number)));
  updateFreeBytes();
}

bool DataPageEditor::replace(SlotNumber number, ByteView row, SlotMark mark) {
  const Slot old = slot(number);
  if (row.size() > old.length + freeBytes()) return false;
  const Bytes kept(row.begin(), row.end());
  resize(number, kept.size());
  const std::size_t offset = rawSlot(number) & kSlotOffset;
  putBytes(page_, offset, kept);
  setSlot(number, offset, mark);
  return true;
}

bool DataPageEditor::hasRoomFor(std::size_t length) const {
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(i); each.isDeleted() && each.length == 0)
      return length <= freeBytes();
  return slotCount_ < kMostSlots && length + 2 <= freeBytes();
}

std::optional<SlotNumber> DataPageEditor::add(ByteView row, SlotMark mark) {
  if (!hasRoomFor(row.size())) return std::nullopt;
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(i); each.isDeleted() && each.length == 0) {
      replace(slotNumber(i), row, mark);
      return slotNumber(i);
    }
  const std::size_t lowest =
      slotCount_ == 0 ? layout_->pageSize : rawSlot(slotCount_ - 1) & kSlotOffset;
  const SlotNumber number = slotNumber(slotCount_++);
  putU16(page_, layout_->dataSlotCount, slotCount_);
  putBytes(page_, lowest - row.size(), row);
  setSlot(number, lowest - row.size(), mark);
  updateFreeBytes();
  return number;
}

void DataPageEditor::markDeleted(SlotNumber number) {
  setSlot(number, rawSlot(number) & kSlotOffset, SlotMark::Deleted);
}

void DataPageEditor::squeeze() {
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(i); each.isDeleted() && each.length > 0) resize(slotNumber(i), 0);
}

}  // namespace jet
