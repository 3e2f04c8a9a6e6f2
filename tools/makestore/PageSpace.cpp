#include "makestore/PageSpace.h"

#include <algorithm>
#include <stdexcept>

#include "platform/jet/format/DataPage.h"

namespace makestore {
namespace {

/// A page with at least this many free bytes is listed as one with room.
constexpr std::size_t kWorthTrying = 100;

/// First page of the window for a map that begins with this page: rounded down to a multiple of 8,
/// since the bits of a window fill whole bytes.
jet::PageNumber windowStart(jet::PageNumber page) {
  return jet::PageNumber(page.value() / jet::kByteBits * jet::kByteBits);
}

}  // namespace

PageSpace::PageSpace(jet::Version version, bool referenceMaps)
    : layout_(jet::layoutOf(version)), referenceMaps_(referenceMaps) {
  allocate();  // the header
  const jet::PageNumber global = allocate();
  put(global, jet::DataPageEditor::newPage(layout_, jet::kNoPage));
  jet::DataPageEditor maps(layout_, page(global), {});
  // The global map, and a second one that is always empty.
  for (int i = 0; i < 2; ++i) maps.add(jet::UsageMap::empty(layout_).encode(), jet::SlotMark::Row);
}

jet::PageNumber PageSpace::allocate() {
  pages_.emplace_back(layout_.pageSize);
  return jet::PageNumber(pages_.size() - 1);
}

void PageSpace::addFreePage() {
  freePages_.push_back(allocate());
}

std::vector<jet::PageNumber> PageSpace::withRoom(const std::vector<jet::PageNumber>& dataPages) {
  std::vector<jet::PageNumber> result;
  for (const jet::PageNumber number : dataPages) {
    const jet::DataPageEditor editor(layout_, page(number), {});
    if (editor.freeBytes() + editor.deadBytes() >= kWorthTrying) result.push_back(number);
  }
  return result;
}

jet::RowPointer PageSpace::newMap() {
  const jet::Bytes row = jet::UsageMap::empty(layout_).encode();
  if (mapPage_ == jet::kNoPage ||
      !jet::DataPageEditor(layout_, page(mapPage_), {}).hasRoomFor(row.size())) {
    mapPage_ = allocate();
    put(mapPage_, jet::DataPageEditor::newPage(layout_, jet::kNoPage));
  }
  jet::DataPageEditor maps(layout_, page(mapPage_), {});
  return {mapPage_, maps.add(row, jet::SlotMark::Row).value()};
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
  map.bitmapPages.resize(jet::UsageMap::empty(layout_).referencesThatFit());
  return map;
}

bool PageSpace::fitsWindow(const std::vector<jet::PageNumber>& pages) const {
  return pages.back().value() - windowStart(pages.front()).value() <
         jet::UsageMap::empty(layout_).windowSize();
}

void PageSpace::writeMap(jet::RowPointer map, const std::vector<jet::PageNumber>& pages) {
  if (pages.empty()) return;
  if (referenceMaps_ || !fitsWindow(pages)) return writeReferenceMap(map, pages);
  jet::UsageMap window = jet::UsageMap::empty(layout_);
  if (!window.covers(pages.back())) window.firstPage = windowStart(pages.front());
  for (const jet::PageNumber number : pages) window.set(number, true);
  putMapRow(map, window.encode());
}

void PageSpace::writeReferenceMap(jet::RowPointer map, const std::vector<jet::PageNumber>& pages) {
  jet::UsageMap references = emptyReferenceMap();
  const std::size_t perBitmap = jet::pagesPerBitmap(layout_);
  for (const jet::PageNumber number : pages) {
    jet::PageNumber& bitmap = references.bitmapPages.at(number.value() / perBitmap);
    if (bitmap == jet::kNoPage) {
      bitmap = allocate();
      put(bitmap, jet::newBitmapPage(layout_));
    }
    jet::setBit(jet::ByteSpan(page(bitmap)).subspan(jet::UsageMap::kBitmapPageBits),
                number.value() % perBitmap, true);
  }
  putMapRow(map, references.encode());
}

void PageSpace::writeGlobalMap() {
  const std::size_t length = std::max(
      layout_.defaultMapRow, jet::UsageMap::kBitmap + jet::UsageMap::bitmapSize(pages_.size()));
  const std::size_t room = jet::DataPageEditor(layout_, page(jet::kGlobalMapPage), {}).freeBytes() +
                           layout_.defaultMapRow;
  if (referenceMaps_ || length > room) return writeGlobalReferenceMap();
  jet::UsageMap map;
  map.bits.assign(length - jet::UsageMap::kBitmap, 0xFF);
  for (std::size_t number = 0; number < pages_.size(); ++number)
    map.set(jet::PageNumber(number), false);
  for (const jet::PageNumber number : freePages_) map.set(number, true);
  putMapRow({jet::kGlobalMapPage, jet::SlotNumber(0)}, map.encode());
}

void PageSpace::writeGlobalReferenceMap() {
  jet::UsageMap references = emptyReferenceMap();
  const std::size_t perBitmap = jet::pagesPerBitmap(layout_);
  // The bitmap pages are pages too, so the last range must include them.
  for (std::size_t range = 0; range * perBitmap < pages_.size(); ++range) {
    const jet::PageNumber bitmap = allocate();
    put(bitmap, jet::newBitmapPage(layout_));
    references.bitmapPages.at(range) = bitmap;
  }
  for (std::size_t number = 0; number < references.bitmapPages.size() * perBitmap; ++number) {
    const jet::PageNumber bitmap = references.bitmapPages[number / perBitmap];
    if (bitmap == jet::kNoPage) break;
    const bool free =
        number >= pages_.size() || std::ranges::binary_search(freePages_, jet::PageNumber(number));
    jet::setBit(jet::ByteSpan(page(bitmap)).subspan(jet::UsageMap::kBitmapPageBits),
                number % perBitmap, free);
  }
  putMapRow({jet::kGlobalMapPage, jet::SlotNumber(0)}, references.encode());
}

}  // namespace makestore
