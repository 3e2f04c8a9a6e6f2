#include "platform/jet/engine/UsageMaps.h"

#include <algorithm>

#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// A row pointer has room for 24 bits of page number.
constexpr std::uint32_t kLastPage = 0xFFFFFF;
/// Rows of maps grow by this many bytes.
constexpr std::size_t kGrowth = 4;
constexpr std::uint32_t kPagesPerGrowth = 8 * kGrowth;

/// Bytes of a bitmap for that many pages.
std::size_t bitmapSize(std::uint32_t pages) {
  return (pages + kPagesPerGrowth - 1) / kPagesPerGrowth * kGrowth;
}

std::size_t lengthOf(const UsageMap& map) {
  return map.kind == UsageMap::Kind::Inline ? UsageMap::kInlineHead + map.bits.size()
                                            : UsageMap::kReferenceHead + 4 * map.bitmapPages.size();
}

struct Extent {
  std::uint32_t lowest;
  std::uint32_t highest;
};

/// The pages of an inline map together with one more.
Extent extentWith(const UsageMap& map, std::uint32_t page) {
  Extent extent{page, page};
  for (std::size_t i = 0; i < map.windowSize(); ++i) {
    if (!bitOf(map.bits, i)) continue;
    const auto number = map.firstPage + static_cast<std::uint32_t>(i);
    extent.lowest = std::min(extent.lowest, number);
    extent.highest = std::max(extent.highest, number);
  }
  return extent;
}

/// The same pages and one more in another window, which covers them all.
UsageMap rewindowed(const UsageMap& map, std::uint32_t page, std::uint32_t firstPage,
                    std::size_t size) {
  UsageMap moved;
  moved.firstPage = firstPage;
  moved.bits.resize(size);
  for (std::size_t i = 0; i < map.windowSize(); ++i)
    if (bitOf(map.bits, i)) moved.set(map.firstPage + static_cast<std::uint32_t>(i), true);
  moved.set(page, true);
  return moved;
}

}  // namespace

UsageMap UsageMaps::read(RowPointer at) {
  const Pager::Page page = changes_.read(at.page, source_.place(source_.definitionPage));
  const DataPage rows(changes_.layout(), *page, source_.place(at.page));
  UsageMap map = UsageMap::decode(rows.bytes(rows.slot(at.slot)), source_.place(at.page));
  if (map.firstPage > kLastPage)
    raiseDamaged(source_.place(at.page), u"a usage map begins behind all pages");
  return map;
}

Pager::Page UsageMaps::readBitmap(std::uint32_t number) {
  Pager::Page page = changes_.read(number, source_.place(source_.definitionPage));
  if ((*page)[0] != static_cast<std::uint8_t>(PageType::Bitmap))
    raiseDamaged(source_.place(number), u"it is no bitmap of a usage map");
  return page;
}

/// Writes a map's row with that length; false where its page has no room for it.
bool UsageMaps::writeRow(RowPointer at, const UsageMap& map, std::size_t length, WriteStep step) {
  Bytes page = *changes_.read(at.page, source_.place(source_.definitionPage));
  Bytes row = map.encode();
  row.resize(std::max(row.size(), length));
  DataPageEditor rows(changes_.layout(), page, source_.place(at.page));
  if (!rows.replace(at.slot, row, SlotMark::Row)) return false;
  changes_.stage(step, at.page, std::move(page));
  return true;
}

void UsageMaps::writeSameRow(RowPointer at, const UsageMap& map, WriteStep step) {
  const Pager::Page page = changes_.read(at.page, source_.place(source_.definitionPage));
  const DataPage rows(changes_.layout(), *page, source_.place(at.page));
  writeRow(at, map, rows.slot(at.slot).length, step);
}

void UsageMaps::setBitmapBit(std::uint32_t bitmap, std::size_t bit, bool value, WriteStep step) {
  Bytes page = *readBitmap(bitmap);
  setBit(ByteSpan(page).subspan(UsageMap::kBitmapHead), bit, value);
  changes_.stage(step, bitmap, std::move(page));
}

/// The entry of a reference map that stands for the page.
std::size_t UsageMaps::rangeOf(const UsageMap& map, std::uint32_t page) const {
  const std::size_t range = page / pagesPerBitmap(changes_.layout());
  if (range >= map.bitmapPages.size())
    raiseUnsupported(source_.place(page), u"a usage map has no room for the page");
  return range;
}

bool UsageMaps::contains(RowPointer at, std::uint32_t page) {
  if (at == RowPointer{}) return false;
  const UsageMap map = read(at);
  if (map.kind == UsageMap::Kind::Inline) return map.contains(page);
  const std::size_t perBitmap = pagesPerBitmap(changes_.layout());
  const std::size_t range = page / perBitmap;
  if (range >= map.bitmapPages.size() || map.bitmapPages[range] == 0) return false;
  const Pager::Page bitmap = readBitmap(map.bitmapPages[range]);
  return bitOf(ByteView(*bitmap).subspan(UsageMap::kBitmapHead), page % perBitmap);
}

bool UsageMaps::shift(RowPointer at, const UsageMap& map, std::uint32_t page, WriteStep step) {
  const Extent extent = extentWith(map, page);
  const std::uint32_t first = extent.lowest / 8 * 8;
  if (extent.highest - first >= map.windowSize()) return false;
  writeSameRow(at, rewindowed(map, page, first, map.bits.size()), step);
  return true;
}

bool UsageMaps::lengthen(RowPointer at, const UsageMap& map, std::uint32_t page, WriteStep step) {
  const std::size_t size = bitmapSize(extentWith(map, page).highest + 1);
  if (size > changes_.layout().pageSize) return false;
  const UsageMap longer = rewindowed(map, page, 0, std::max(size, map.bits.size()));
  return writeRow(at, longer, 0, step);
}

void UsageMaps::turnIntoReference(RowPointer at, WriteStep step) {
  const UsageMap map = read(at);
  const std::size_t perBitmap = pagesPerBitmap(changes_.layout());
  UsageMap reference;
  reference.kind = UsageMap::Kind::Reference;
  reference.bitmapPages.resize((lengthOf(map) - UsageMap::kReferenceHead) / 4);
  for (std::size_t i = 0; i < map.windowSize(); ++i) {
    if (!bitOf(map.bits, i)) continue;
    const auto page = map.firstPage + static_cast<std::uint32_t>(i);
    std::uint32_t& bitmap = reference.bitmapPages[rangeOf(reference, page)];
    if (bitmap == 0) {
      bitmap = takePage();
      changes_.stage(WriteStep::NewPages, bitmap, newBitmapPage(changes_.layout()));
    }
    setBitmapBit(bitmap, page % perBitmap, true, WriteStep::NewPages);
  }
  writeSameRow(at, reference, step);
}

void UsageMaps::addToReference(RowPointer at, std::uint32_t page, WriteStep step) {
  UsageMap map = read(at);
  const std::size_t range = rangeOf(map, page);
  const std::size_t bit = page % pagesPerBitmap(changes_.layout());
  if (map.bitmapPages[range] != 0) {
    setBitmapBit(map.bitmapPages[range], bit, true, step);
    return;
  }
  const std::uint32_t bitmap = takePage();
  changes_.stage(WriteStep::NewPages, bitmap, newBitmapPage(changes_.layout()));
  setBitmapBit(bitmap, bit, true, WriteStep::NewPages);
  // Taking the page may have changed the page that the map lies on.
  map = read(at);
  map.bitmapPages[range] = bitmap;
  writeSameRow(at, map, step);
}

void UsageMaps::add(RowPointer at, std::uint32_t page, WriteStep step) {
  if (at == RowPointer{})
    raiseUnsupported(source_.place(source_.definitionPage), u"it has no usage map");
  if (contains(at, page)) return;
  UsageMap map = read(at);
  if (map.kind == UsageMap::Kind::Inline) {
    if (map.covers(page)) {
      map.set(page, true);
      writeSameRow(at, map, step);
      return;
    }
    if (shift(at, map, page, step) || lengthen(at, map, page, step)) return;
    turnIntoReference(at, step);
  }
  addToReference(at, page, step);
}

void UsageMaps::remove(RowPointer at, std::uint32_t page, WriteStep step) {
  if (!contains(at, page)) return;
  UsageMap map = read(at);
  if (map.kind == UsageMap::Kind::Inline) {
    map.set(page, false);
    writeSameRow(at, map, step);
    return;
  }
  const std::size_t perBitmap = pagesPerBitmap(changes_.layout());
  setBitmapBit(map.bitmapPages[page / perBitmap], page % perBitmap, false, step);
}

void UsageMaps::hint(RowPointer at, std::uint32_t page, bool hasRoom) {
  if (at == RowPointer{} || contains(at, page) == hasRoom) return;
  if (!hasRoom) {
    remove(at, page, WriteStep::FreeSpace);
    return;
  }
  // Only where no page has to be taken for it: those are taken in the first step.
  UsageMap map = read(at);
  if (map.kind == UsageMap::Kind::Reference) {
    const std::size_t range = page / pagesPerBitmap(changes_.layout());
    if (range < map.bitmapPages.size() && map.bitmapPages[range] != 0)
      addToReference(at, page, WriteStep::FreeSpace);
  } else if (map.covers(page)) {
    map.set(page, true);
    writeSameRow(at, map, WriteStep::FreeSpace);
  } else if (!shift(at, map, page, WriteStep::FreeSpace)) {
    lengthen(at, map, page, WriteStep::FreeSpace);
  }
}

}  // namespace jet
