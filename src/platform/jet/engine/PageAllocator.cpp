#include "platform/jet/engine/PageAllocator.h"

#include "platform/jet/format/Bits.h"
#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

constexpr RowPointer kGlobalMap{kGlobalMapPage, SlotNumber(0)};

/// The lowest page whose bit is set and which may be taken: it is in the file, after the pages with
/// fixed numbers. `first` is the page of the first bit, `end` the number of pages in the file.
std::optional<PageNumber> lowestSetPage(ByteView bits, std::uint64_t first, std::uint32_t end) {
  std::optional<PageNumber> found;
  forEachSetBit(bits, [&](std::size_t bit) {
    const std::uint64_t page = first + bit;
    if (!found && page > kRelationshipsPage.value() && page < end) found = PageNumber(page);
  });
  return found;
}

}  // namespace

std::optional<PageNumber> PageAllocator::lowestFree() {
  const UsageMap map = maps_.read(kGlobalMap);
  const std::uint32_t end = changes_.pageCount();
  if (map.kind == UsageMap::Kind::Inline)
    return lowestSetPage(map.bits, map.firstPage.value(), end);
  const std::size_t perBitmap = pagesPerBitmap(changes_.layout());
  for (std::size_t i = 0; i < map.bitmapPages.size() && i * perBitmap < end; ++i) {
    if (map.bitmapPages[i] == kNoPage) continue;
    const Pager::Page bitmap = maps_.readBitmap(map.bitmapPages[i]);
    const ByteView bits = ByteView(*bitmap).subspan(UsageMap::kBitmapPageBits);
    if (const auto page = lowestSetPage(bits, i * perBitmap, end)) return page;
  }
  return std::nullopt;
}

PageNumber PageAllocator::take() {
  const std::optional<PageNumber> free = lowestFree();
  const PageNumber page = free ? *free : changes_.addPage(source_.location(kGlobalMapPage));
  markUsed(page);
  return page;
}

void PageAllocator::markUsed(PageNumber page) {
  UsageMap map = maps_.read(kGlobalMap);
  if (map.kind == UsageMap::Kind::Inline) {
    // Pages below a window that has moved upwards have no bit: they count as used.
    if (page < map.firstPage) return;
    if (map.covers(page)) {
      map.set(page, false);
      maps_.writeInPlace(kGlobalMap, map, WriteStep::TakePages);
    } else if (!lengthen(map, page)) {
      turnIntoReference(map);
    }
    return;
  }
  const std::size_t bitmapIndex = maps_.bitmapIndexOf(map, page);
  if (map.bitmapPages[bitmapIndex] == kNoPage)
    addBitmap(map, bitmapIndex);
  else
    maps_.setBitmapBit(map.bitmapPages[bitmapIndex], maps_.bitOnBitmap(page), false,
                       WriteStep::TakePages);
}

/// Of the pages that the longer map covers now, those beyond the end of the file are marked free.
/// The others stay marked used, since their state is unknown.
bool PageAllocator::lengthen(UsageMap map, PageNumber page) {
  const std::size_t size =
      UsageMap::bitmapSize(page.value() - map.firstPage.value() + std::size_t{1});
  if (size > changes_.layout().pageSize) return false;
  std::size_t bit = map.windowSize();
  map.bits.resize(size);
  for (; bit < map.windowSize(); ++bit)
    if (map.pageOf(bit).value() >= changes_.pageCount()) setBit(map.bits, bit, true);
  return maps_.write(kGlobalMap, map, 0, WriteStep::TakePages);
}

void PageAllocator::turnIntoReference(const UsageMap& map) {
  const Layout& layout = changes_.layout();
  const std::size_t perBitmap = pagesPerBitmap(layout);
  UsageMap reference;
  reference.kind = UsageMap::Kind::Reference;
  std::vector<PageNumber>& bitmaps = reference.bitmapPages;
  while (bitmaps.size() * perBitmap < changes_.pageCount())
    bitmaps.push_back(changes_.addPage(source_.location(kGlobalMapPage)));
  if (bitmaps.size() > map.referencesThatFit())
    raiseUnsupported(source_.location(kGlobalMapPage), u"the map of free pages has no room");
  for (std::size_t bitmapIndex = 0; bitmapIndex < bitmaps.size(); ++bitmapIndex) {
    Bytes page = newBitmapPage(layout);
    const ByteSpan bits = ByteSpan(page).subspan(UsageMap::kBitmapPageBits);
    for (std::size_t bit = 0; bit < perBitmap; ++bit) {
      const PageNumber number(bitmapIndex * perBitmap + bit);
      setBit(bits, bit,
             map.covers(number) ? map.contains(number) : number.value() >= changes_.pageCount());
    }
    changes_.stage(WriteStep::TakePages, bitmaps[bitmapIndex], std::move(page));
  }
  changes_.barrier(WriteStep::TakePages);
  maps_.writeInPlace(kGlobalMap, reference, WriteStep::TakePages);
}

void PageAllocator::addBitmap(UsageMap map, std::size_t bitmapIndex) {
  const std::size_t perBitmap = pagesPerBitmap(changes_.layout());
  const PageNumber bitmap = changes_.addPage(source_.location(kGlobalMapPage));
  Bytes page = newBitmapPage(changes_.layout());
  const ByteSpan bits = ByteSpan(page).subspan(UsageMap::kBitmapPageBits);
  for (std::size_t bit = 0; bit < perBitmap; ++bit)
    if (bitmapIndex * perBitmap + bit >= changes_.pageCount()) setBit(bits, bit, true);
  changes_.stage(WriteStep::TakePages, bitmap, std::move(page));
  changes_.barrier(WriteStep::TakePages);
  map.bitmapPages[bitmapIndex] = bitmap;
  maps_.writeInPlace(kGlobalMap, map, WriteStep::TakePages);
  if (bitmap.value() < bitmapIndex * perBitmap || bitmap.value() >= (bitmapIndex + 1) * perBitmap)
    markUsed(bitmap);
}

void PageAllocator::free(PageNumber page) {
  UsageMap map = maps_.read(kGlobalMap);
  if (map.kind == UsageMap::Kind::Inline) {
    if (!map.covers(page)) return;
    map.set(page, true);
    maps_.writeInPlace(kGlobalMap, map, WriteStep::Hints);
  } else if (const PageNumber bitmap = maps_.bitmapFor(map, page); bitmap != kNoPage) {
    maps_.setBitmapBit(bitmap, maps_.bitOnBitmap(page), true, WriteStep::Hints);
  }
}

}  // namespace jet
