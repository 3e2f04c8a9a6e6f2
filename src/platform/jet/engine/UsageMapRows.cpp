#include "platform/jet/engine/UsageMapRows.h"

#include <algorithm>

#include "platform/jet/engine/MappedPages.h"
#include "platform/jet/format/DataPage.h"

namespace jet {
UsageMap UsageMapRows::read(RowPointer at) {
  const Pager::Page page = changes_.read(at.page, source_.location(source_.definitionPage));
  const DataPage rows(changes_.layout(), *page, source_.location(at.page));
  UsageMap map = UsageMap::decode(rows.bytes(rows.slot(at.slot)), source_.location(at.page));
  if (map.firstPage > kLastPage)
    changes_.pager().raiseOutside(map.firstPage.value(), source_.location(at.page));
  return map;
}

Pager::Page UsageMapRows::readBitmap(PageNumber number) {
  Pager::Page page = changes_.read(number, source_.location(source_.definitionPage));
  requireBitmap(*page, source_.location(number));
  return page;
}

bool UsageMapRows::write(RowPointer at, const UsageMap& map, std::size_t length, WriteStep step) {
  Bytes page = *changes_.read(at.page, source_.location(source_.definitionPage));
  Bytes row = map.encode();
  row.resize(std::max(row.size(), length));
  DataPageEditor rows(changes_.layout(), page, source_.location(at.page));
  if (!rows.replace(at.slot, row, SlotMark::Row)) return false;
  changes_.stageMap(step, at.page, std::move(page));
  return true;
}

void UsageMapRows::writeInPlace(RowPointer at, const UsageMap& map, WriteStep step) {
  const Pager::Page page = changes_.read(at.page, source_.location(source_.definitionPage));
  const DataPage rows(changes_.layout(), *page, source_.location(at.page));
  write(at, map, rows.slot(at.slot).length, step);
}

void UsageMapRows::setBitmapBit(PageNumber bitmap, std::size_t bit, bool value, WriteStep step) {
  Bytes page = *readBitmap(bitmap);
  setBit(ByteSpan(page).subspan(UsageMap::kBitmapPageBits), bit, value);
  changes_.stageMap(step, bitmap, std::move(page));
}

std::size_t UsageMapRows::bitmapIndexOf(const UsageMap& map, PageNumber page) const {
  const std::size_t bitmapIndex = page.value() / pagesPerBitmap(changes_.layout());
  if (bitmapIndex >= map.bitmapPages.size())
    raiseUnsupported(source_.location(page), u"a usage map has no room for the page");
  return bitmapIndex;
}

PageNumber UsageMapRows::bitmapFor(const UsageMap& map, PageNumber page) const {
  const std::size_t bitmapIndex = page.value() / pagesPerBitmap(changes_.layout());
  return bitmapIndex < map.bitmapPages.size() ? map.bitmapPages[bitmapIndex] : kNoPage;
}

std::size_t UsageMapRows::bitOnBitmap(PageNumber page) const {
  return page.value() % pagesPerBitmap(changes_.layout());
}

}  // namespace jet
