#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// The bits of a slot: the offset of its row, and its SlotMark.
constexpr std::size_t kSlotOffset = 0x1FFF;
constexpr std::size_t kSlotMark = 0xC000;

std::size_t slotAddress(const Layout& layout, std::size_t index) {
  return layout.dataSlots + kSlotSize * index;
}

}  // namespace

DataPage::DataPage(const Layout& layout, ByteView page, const Location& location)
    : layout_(&layout),
      page_(page),
      location_(location),
      slotCount_(u16At(page, layout.dataSlotCount)) {
  if (page[PageHead::kType] != static_cast<std::uint8_t>(PageType::Data))
    raiseDamaged(location, u"it is no data page");
  if (slotAddress(layout, slotCount_) > layout.pageSize)
    raiseDamaged(
        location, u"it claims more rows than it can hold",
        {.offset = layout.dataSlots, .size = kSlotSize * slotCount_, .available = layout.pageSize});
}

std::size_t DataPage::rawSlot(SlotNumber number) const {
  return u16At(page_, slotAddress(*layout_, number.value()));
}

Slot DataPage::slot(SlotNumber number) const {
  const std::size_t index = number.value();
  const std::size_t slotsEnd = slotAddress(*layout_, slotCount_);
  if (index >= slotCount_)
    raiseDamaged(
        location_, u"a row is looked for that it doesn't have",
        {.offset = slotAddress(*layout_, index), .size = kSlotSize, .available = slotsEnd});
  const std::size_t raw = rawSlot(number);
  const std::size_t offset = raw & kSlotOffset;
  const std::size_t end =
      index == 0 ? layout_->pageSize : rawSlot(SlotNumber(index - 1)) & kSlotOffset;
  if (offset > end || end > layout_->pageSize || offset < slotsEnd)
    raiseDamaged(location_, u"a row lies outside its bounds",
                 {.offset = offset,
                  .size = end - std::min(offset, end),
                  .available = std::min(end, layout_->pageSize)});
  return {.offset = offset,
          .length = end - offset,
          .pointer = (raw & static_cast<std::size_t>(SlotMark::Pointer)) != 0,
          .hidden = (raw & static_cast<std::size_t>(SlotMark::Body)) != 0};
}

DataPageEditor::DataPageEditor(const Layout& layout, ByteSpan page, const Location& location)
    : DataPage(layout, page, location), bytes_(page) {
  for (std::size_t i = 0; i < slotCount_; ++i) slot(SlotNumber(i));
}

Bytes DataPageEditor::newPage(const Layout& layout, PageNumber owner) {
  Bytes page(layout.pageSize);
  page[PageHead::kType] = static_cast<std::uint8_t>(PageType::Data);
  page[PageHead::kMark] = PageHead::kLive;
  putU16(page, PageHead::kFreeBytes, layout.pageSize - layout.dataSlots);
  putU32(page, PageHead::kOwner, owner.value());
  return page;
}

void DataPageEditor::setSlot(SlotNumber number, std::size_t offset, SlotMark mark) {
  putU16(bytes_, slotAddress(*layout_, number.value()), offset | static_cast<std::size_t>(mark));
}

std::size_t DataPageEditor::lowestRow() const {
  return slotCount_ == 0 ? layout_->pageSize : rawSlot(SlotNumber(slotCount_ - 1)) & kSlotOffset;
}

std::size_t DataPageEditor::freeBytes() const {
  return lowestRow() - slotAddress(*layout_, slotCount_);
}

void DataPageEditor::updateFreeBytes() {
  putU16(bytes_, PageHead::kFreeBytes, freeBytes());
}

std::size_t DataPageEditor::deadBytes() const {
  std::size_t dead = 0;
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(SlotNumber(i)); each.isDeleted()) dead += each.length;
  return dead;
}

/// Sets the length of the slot's bytes.
void DataPageEditor::resizeSlot(SlotNumber number, std::size_t length) {
  const Slot old = slot(number);
  const std::size_t lowest = lowestRow();
  // The rows of the higher slots lie below this one: they slide by the difference as one block.
  putBytes(bytes_, lowest + old.length - length, page_.subspan(lowest, old.offset - lowest));
  for (std::size_t i = number.value(); i < slotCount_; ++i) {
    const std::size_t raw = rawSlot(SlotNumber(i));
    setSlot(SlotNumber(i), (raw & kSlotOffset) + old.length - length,
            static_cast<SlotMark>(raw & kSlotMark));
  }
  updateFreeBytes();
}

bool DataPageEditor::replace(SlotNumber number, ByteView row, SlotMark mark) {
  if (row.size() > slot(number).length + freeBytes()) return false;
  const Bytes kept(row.begin(), row.end());
  resizeSlot(number, kept.size());
  const std::size_t offset = rawSlot(number) & kSlotOffset;
  putBytes(bytes_, offset, kept);
  setSlot(number, offset, mark);
  return true;
}

/// The first slot of a deleted row without bytes.
std::optional<SlotNumber> DataPageEditor::emptySlot() const {
  for (std::size_t i = 0; i < slotCount(); ++i)
    if (const Slot each = slot(SlotNumber(i)); each.isDeleted() && each.length == 0)
      return SlotNumber(i);
  return std::nullopt;
}

bool DataPageEditor::hasRoomFor(std::size_t length) const {
  if (emptySlot()) return length <= freeBytes();
  return slotCount_ < kMostSlots && length + kSlotSize <= freeBytes();
}

std::optional<SlotNumber> DataPageEditor::add(ByteView row, SlotMark mark) {
  if (!hasRoomFor(row.size())) return std::nullopt;
  if (const std::optional<SlotNumber> empty = emptySlot()) {
    replace(*empty, row, mark);
    return empty;
  }
  const std::size_t offset = lowestRow() - row.size();
  const SlotNumber number(slotCount_++);
  putU16(bytes_, layout_->dataSlotCount, slotCount_);
  putBytes(bytes_, offset, row);
  setSlot(number, offset, mark);
  updateFreeBytes();
  return number;
}

void DataPageEditor::markDeleted(SlotNumber number) {
  setSlot(number, rawSlot(number) & kSlotOffset, SlotMark::Deleted);
}

void DataPageEditor::squeeze() {
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slot(SlotNumber(i)); each.isDeleted() && each.length > 0)
      resizeSlot(SlotNumber(i), 0);
}

}  // namespace jet
