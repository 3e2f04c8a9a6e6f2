#include "makestore/PageSpace.h"

#include <algorithm>
#include <stdexcept>

#include "platform/jet/format/DataPage.h"

namespace makestore {
namespace {

/// A window begins at a multiple of this.
constexpr std::uint32_t kWindowStep = 8;
/// An inline map grows in units of this many bits.
constexpr std::size_t kPagesPerWord = 32;
/// A page with at least this many free bytes is listed as one with room.
constexpr std::size_t kWorthTrying = 100;

}  // namespace

PageSpace::PageSpace(jet::Version version, bool referenceMaps)
    : layout_(jet::layoutOf(version)), referenceMaps_(referenceMaps) {
  allocate();  // the header
  const std::uint32_t global = allocate();
  put(global, jet::DataPageEditor::newPage(layout_, 0));
  jet::DataPageEditor maps(layout_, page(global), {});
  // The global map, and a second one that is always empty.
  for (int i = 0; i < 2; ++i) maps.add(jet::UsageMap::empty(layout_).encode(), jet::SlotMark::Row);
}

std::uint32_t PageSpace::allocate() {
  pages_.emplace_back(layout_.pageSize);
  return static_cast<std::uint32_t>(pages_.size() - 1);
}

void PageSpace::addFreePage() {
  freePages_.push_back(allocate());
}

std::vector<std::uint32_t> PageSpace::withRoom(const std::vector<std::uint32_t>& dataPages) {
  std::vector<std::uint32_t> result;
  for (const std::uint32_t number : dataPages) {
    const jet::DataPageEditor editor(layout_, page(number), {});
    if (editor.freeBytes() + editor.deadBytes() >= kWorthTrying) result.push_back(number);
  }
  return result;
}

jet::RowPointer PageSpace::newMap() {
  const jet::Bytes row = jet::UsageMap::empty(layout_).encode();
  if (mapPage_ == 0 || !jet::DataPageEditor(layout_, page(mapPage_), {}).hasRoomFor(row.size())) {
    mapPage_ = allocate();
    put(mapPage_, jet::DataPageEditor::newPage(layout_, 0));
  }
  jet::DataPageEditor maps(layout_, page(mapPage_), {});
  return {jet::PageNumber(mapPage_), maps.add(row, jet::SlotMark::Row).value()};
}

void PageSpace::putMapRow(jet::RowPointer map, jet::ByteView row) {
  jet::DataPageEditor maps(layout_, page(map.page), {});
  if (!maps.replace(map.slot, row, jet::SlotMark::Row))
    throw std::length_error("a usage map outgrew its page");
}

/// A reference map without bitmap pages, in a row of the usual length.
jet::UsageMap PageSpace::emptyReferenceMap() const {
  jet::UsageMap map;
  map.kind = jet::UsageMap::Kind::Reference;
  map.bitmapPages.resize((layout_.defaultMapRow - jet::UsageMap::kBitmapPages) / 4);
  return map;
}

bool PageSpace::fitsWindow(const std::vector<std::uint32_t>& pages) const {
  const std::uint32_t first = pages.front() / kWindowStep * kWindowStep;
  return pages.back() - first < jet::UsageMap::empty(layout_).windowSize();
}

void PageSpace::writeMap(jet::RowPointer map, const std::vector<std::uint32_t>& pages) {
  if (pages.empty()) return;
  if (referenceMaps_ || !fitsWindow(pages)) return writeReferenceMap(map, pages);
  jet::UsageMap window = jet::UsageMap::empty(layout_);
  if (!window.covers(jet::PageNumber(pages.back())))
    window.firstPage = jet::PageNumber(pages.front() / kWindowStep * kWindowStep);
  for (const std::uint32_t number : pages) window.set(jet::PageNumber(number), true);
  putMapRow(map, window.encode());
}

void PageSpace::writeReferenceMap(jet::RowPointer map, const std::vector<std::uint32_t>& pages) {
  jet::UsageMap references = emptyReferenceMap();
  for (const std::uint32_t number : pages) {
    jet::PageNumber& bitmap = references.bitmapPages.at(number / jet::pagesPerBitmap(layout_));
    if (bitmap == 0) {
      bitmap = jet::PageNumber(allocate());
      put(bitmap, jet::newBitmapPage(layout_));
    }
    jet::setBit(jet::ByteSpan(page(bitmap)).subspan(jet::UsageMap::kBitmapPageBits),
                number % jet::pagesPerBitmap(layout_), true);
  }
  putMapRow(map, references.encode());
}

void PageSpace::writeGlobalMap() {
  const std::size_t words = (pages_.size() + kPagesPerWord - 1) / kPagesPerWord;
  const std::size_t length = std::max(layout_.defaultMapRow, jet::UsageMap::kBitmap + 4 * words);
  const std::size_t room = jet::DataPageEditor(layout_, page(jet::kGlobalMapPage), {}).freeBytes() +
                           layout_.defaultMapRow;
  if (referenceMaps_ || length > room) return writeGlobalReferenceMap();
  jet::UsageMap map;
  map.bits.assign(length - jet::UsageMap::kBitmap, 0xFF);
  for (std::uint32_t number = 0; number < pages_.size(); ++number)
    map.set(jet::PageNumber(number), false);
  for (const std::uint32_t number : freePages_) map.set(jet::PageNumber(number), true);
  putMapRow({jet::kGlobalMapPage, jet::SlotNumber(0)}, map.encode());
}

void PageSpace::writeGlobalReferenceMap() {
  jet::UsageMap references = emptyReferenceMap();
  const std::size_t perBitmap = jet::pagesPerBitmap(layout_);
  // The bitmap pages are pages too, so the last range must include them.
  for (std::size_t range = 0; range * perBitmap < pages_.size(); ++range) {
    const std::uint32_t bitmap = allocate();
    put(bitmap, jet::newBitmapPage(layout_));
    references.bitmapPages.at(range) = jet::PageNumber(bitmap);
  }
  for (std::size_t number = 0; number < references.bitmapPages.size() * perBitmap; ++number) {
    const std::uint32_t bitmap = references.bitmapPages[number / perBitmap];
    if (bitmap == 0) break;
    const bool free = number >= pages_.size() ||
                      std::ranges::binary_search(freePages_, static_cast<std::uint32_t>(number));
    jet::setBit(jet::ByteSpan(page(bitmap)).subspan(jet::UsageMap::kBitmapPageBits),
                number % perBitmap, free);
  }
  putMapRow({jet::kGlobalMapPage, jet::SlotNumber(0)}, references.encode());
}

}  // namespace makestore
