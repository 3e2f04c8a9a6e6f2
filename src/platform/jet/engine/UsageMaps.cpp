#include "platform/jet/engine/UsageMaps.h"

#include <algorithm>

#include "platform/jet/format/Bits.h"
#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

struct Extent {
  PageNumber lowest;
  PageNumber highest;
};

/// The range of an inline map's pages together with one more.
Extent extentWith(const UsageMap& map, PageNumber page) {
  Extent extent{page, page};
  forEachSetBit(map.bits, [&](std::size_t bit) {
    extent.lowest = std::min(extent.lowest, map.pageOf(bit));
    extent.highest = std::max(extent.highest, map.pageOf(bit));
  });
  return extent;
}

/// The same pages in another window, which covers them all.
UsageMap rewindowed(const UsageMap& map, PageNumber firstPage, std::size_t size) {
  UsageMap moved;
  moved.firstPage = firstPage;
  moved.bits.resize(size);
  forEachSetBit(map.bits, [&](std::size_t bit) { moved.set(map.pageOf(bit), true); });
  return moved;
}

}  // namespace

bool UsageMaps::contains(RowPointer at, PageNumber page) {
  if (at == RowPointer{}) return false;
  const UsageMap map = rows_.read(at);
  if (map.kind == UsageMap::Kind::Inline) return map.contains(page);
  const PageNumber number = rows_.bitmapFor(map, page);
  if (number == kNoPage) return false;
  const Pager::Page bitmap = rows_.readBitmap(number);
  return bitOf(ByteView(*bitmap).subspan(UsageMap::kBitmapPageBits), rows_.bitOnBitmap(page));
}

bool UsageMaps::shift(RowPointer at, const UsageMap& map, PageNumber page, WriteStep step) {
  const Extent extent = extentWith(map, page);
  const PageNumber first(extent.lowest.value() / kByteBits * kByteBits);
  if (extent.highest.value() - first.value() >= map.windowSize()) return false;
  rows_.writeInPlace(at, rewindowed(map, first, map.bits.size()), step);
  return true;
}

bool UsageMaps::lengthen(RowPointer at, const UsageMap& map, PageNumber page, WriteStep step) {
  const std::size_t size =
      UsageMap::bitmapSize(extentWith(map, page).highest.value() + std::size_t{1});
  if (size > changes_.layout().pageSize) return false;
  return rows_.write(at, rewindowed(map, PageNumber(), std::max(size, map.bits.size())), 0, step);
}

/// Makes a map cover a page where that takes no new page; false where it does.
bool UsageMaps::coverWithoutBitmap(RowPointer at, PageNumber page, WriteStep step) {
  const UsageMap map = rows_.read(at);
  if (map.kind == UsageMap::Kind::Reference) return rows_.bitmapFor(map, page) != kNoPage;
  return map.covers(page) || shift(at, map, page, step) || lengthen(at, map, page, step);
}

void UsageMaps::turnIntoReference(RowPointer at, WriteStep step) {
  const UsageMap map = rows_.read(at);
  UsageMap reference;
  reference.kind = UsageMap::Kind::Reference;
  reference.bitmapPages.resize(map.referencesThatFit());
  forEachSetBit(map.bits, [&](std::size_t bit) {
    const PageNumber page = map.pageOf(bit);
    PageNumber& bitmap = reference.bitmapPages[rows_.bitmapIndexOf(reference, page)];
    if (bitmap == kNoPage) {
      bitmap = pages_.take();
      changes_.stage(WriteStep::NewPages, bitmap, newBitmapPage(changes_.layout()));
    }
    rows_.setBitmapBit(bitmap, rows_.bitOnBitmap(page), true, WriteStep::NewPages);
  });
  rows_.writeInPlace(at, reference, step);
}

void UsageMaps::addBitmap(RowPointer at, std::size_t bitmapIndex, WriteStep step) {
  const PageNumber bitmap = pages_.take();
  changes_.stage(WriteStep::NewPages, bitmap, newBitmapPage(changes_.layout()));
  // Read only now: taking the page may have changed the page that holds the map.
  UsageMap map = rows_.read(at);
  map.bitmapPages[bitmapIndex] = bitmap;
  rows_.writeInPlace(at, map, step);
}

void UsageMaps::cover(RowPointer at, PageNumber page, WriteStep step) {
  if (at == RowPointer{})
    raiseUnsupported(source_.location(source_.definitionPage), u"it has no usage map");
  if (coverWithoutBitmap(at, page, step)) return;
  if (rows_.read(at).kind == UsageMap::Kind::Inline) turnIntoReference(at, step);
  const UsageMap map = rows_.read(at);
  const std::size_t bitmapIndex = rows_.bitmapIndexOf(map, page);
  if (map.bitmapPages[bitmapIndex] == kNoPage) addBitmap(at, bitmapIndex, step);
}

/// Sets or clears the bit of a page that the map covers.
void UsageMaps::set(RowPointer at, PageNumber page, bool value, WriteStep step) {
  UsageMap map = rows_.read(at);
  if (map.kind == UsageMap::Kind::Reference) {
    rows_.setBitmapBit(rows_.bitmapFor(map, page), rows_.bitOnBitmap(page), value, step);
    return;
  }
  map.set(page, value);
  rows_.writeInPlace(at, map, step);
}

void UsageMaps::add(RowPointer at, PageNumber page, WriteStep step) {
  if (contains(at, page)) return;
  cover(at, page, step);
  set(at, page, true, step);
}

void UsageMaps::remove(RowPointer at, PageNumber page, WriteStep step) {
  if (contains(at, page)) set(at, page, false, step);
}

void UsageMaps::hint(RowPointer at, PageNumber page, bool hasRoom) {
  if (at == RowPointer{} || contains(at, page) == hasRoom) return;
  // Only where this takes no new page: pages are taken in the first step.
  if (!hasRoom || coverWithoutBitmap(at, page, WriteStep::Hints))
    set(at, page, hasRoom, WriteStep::Hints);
}

}  // namespace jet
