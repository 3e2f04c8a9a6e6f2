#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// The bits of a slot: the offset of its row, and its SlotMark.
constexpr std::size_t kSlotOffset = 0x1FFF;
constexpr std::size_t kSlotMark = 0xC000;

SlotMark markOf(std::size_t raw) {
  return static_cast<SlotMark>(raw & kSlotMark);
}

std::size_t slotAddress(const Layout& layout, std::size_t index) {
  return layout.dataSlots + kSlotSize * index;
}

std::size_t rawSlot(const Layout& layout, ByteView page, std::size_t index) {
  return u16At(page, slotAddress(layout, index));
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
    raiseDamaged(location, u"it claims more rows than it can hold",
                 {layout.dataSlots, kSlotSize * slotCount_, layout.pageSize});
}

Slot DataPage::slotAt(std::size_t index) const {
  const std::size_t slotsEnd = slotAddress(*layout_, slotCount_);
  if (index >= slotCount_)
    raiseDamaged(location_, u"a row is looked for that it doesn't have",
                 {slotAddress(*layout_, index), kSlotSize, slotsEnd});
  const std::size_t raw = rawSlot(*layout_, page_, index);
  const std::size_t offset = raw & kSlotOffset;
  const std::size_t end =
      index == 0 ? layout_->pageSize : rawSlot(*layout_, page_, index - 1) & kSlotOffset;
  if (offset > end || end > layout_->pageSize || offset < slotsEnd)
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
  slotCount_ = checked.slotCount_;
  for (std::size_t i = 0; i < slotCount_; ++i) checked.slotAt(i);
}

Bytes DataPageEditor::newPage(const Layout& layout, PageNumber owner) {
  Bytes page(layout.pageSize);
  page[PageHead::kType] = static_cast<std::uint8_t>(PageType::Data);
  page[PageHead::kMark] = PageHead::kLive;
  putU16(page, PageHead::kFreeBytes, layout.pageSize - layout.dataSlots);
  putU32(page, PageHead::kOwner, owner.value());
  return page;
}

void DataPageEditor::setSlot(std::size_t index, std::size_t offset, SlotMark mark) {
  putU16(page_, slotAddress(*layout_, index), offset | static_cast<std::size_t>(mark));
}

Slot DataPageEditor::slotAt(std::size_t index) const {
  return DataPage(*layout_, page_, {}).slotAt(index);
}

ByteView DataPageEditor::bytes(SlotNumber number) const {
  const Slot found = slot(number);
  return page_.subspan(found.offset, found.length);
}

std::size_t DataPageEditor::lowestRow() const {
  return slotCount_ == 0 ? layout_->pageSize
                         : rawSlot(*layout_, page_, slotCount_ - 1) & kSlotOffset;
}

std::size_t DataPageEditor::freeBytes() const {
  return lowestRow() - slotAddress(*layout_, slotCount_);
}

void DataPageEditor::updateFreeBytes() {
  putU16(page_, PageHead::kFreeBytes, freeBytes());
}

std::size_t DataPageEditor::deadBytes() const {
  std::size_t dead = 0;
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slotAt(i); each.isDeleted()) dead += each.length;
  return dead;
}

/// Sets the size of the slot to that of the row.
void DataPageEditor::fit(std::size_t index, ByteView row) {
  const Slot old = slotAt(index);
  const std::size_t lowest = lowestRow();
  const std::size_t offset = old.offset + old.length - row.size();
  // The rows of the higher slots lie below this one: they slide by the difference as one block.
  putBytes(page_, lowest + offset - old.offset, page_.subspan(lowest, old.offset - lowest));
  for (std::size_t i = index + 1; i < slotCount_; ++i) {
    const std::size_t raw = rawSlot(*layout_, page_, i);
    setSlot(i, (raw & kSlotOffset) + offset - old.offset, markOf(raw));
  }
  setSlot(index, offset, markOf(rawSlot(*layout_, page_, index)));
  updateFreeBytes();
}

bool DataPageEditor::replace(SlotNumber number, ByteView row, SlotMark mark) {
  const Slot old = slot(number);
  if (row.size() > old.length + freeBytes()) return false;
  const Bytes kept(row.begin(), row.end());
  fit(number.value(), kept);
  const std::size_t offset = rawSlot(*layout_, page_, number.value()) & kSlotOffset;
  putBytes(page_, offset, kept);
  setSlot(number.value(), offset, mark);
  return true;
}

/// The first slot of a deleted row without bytes.
std::optional<SlotNumber> DataPageEditor::emptySlot() const {
  for (std::size_t i = 0; i < std::min(slotCount_, kMostSlots); ++i)
    if (const Slot each = slotAt(i); each.isDeleted() && each.length == 0) return SlotNumber(i);
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
  const std::size_t index = slotCount_++;
  putU16(page_, layout_->dataSlotCount, slotCount_);
  putBytes(page_, offset, row);
  setSlot(index, offset, mark);
  updateFreeBytes();
  return SlotNumber(index);
}

void DataPageEditor::markDeleted(SlotNumber number) {
  setSlot(number.value(), rawSlot(*layout_, page_, number.value()) & kSlotOffset,
          SlotMark::Deleted);
}

void DataPageEditor::squeeze() {
  for (std::size_t i = 0; i < slotCount_; ++i)
    if (const Slot each = slotAt(i); each.isDeleted() && each.length > 0) fit(i, {});
}

}  // namespace jet
