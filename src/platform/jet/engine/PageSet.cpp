#include "platform/jet/engine/PageSet.h"

#include <bit>

#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

void addSetBits(ByteView bits, std::uint64_t first, std::uint32_t pageCount,
                std::vector<std::uint32_t>& pages) {
  for (std::size_t i = 0; i < bits.size(); ++i)
    for (unsigned byte = bits[i]; byte != 0; byte &= byte - 1) {
      const std::uint64_t page = first + 8 * i + static_cast<std::uint64_t>(std::countr_zero(byte));
      if (page < pageCount) pages.push_back(static_cast<std::uint32_t>(page));
    }
}

}  // namespace

UsageMap readUsageMap(Pager& pager, RowPointer map, const Place& from) {
  const Pager::Page page = pager.read(map.page, from);
  const Place place = from.at(map.page);
  const DataPage rows(pager.layout(), *page, place);
  return UsageMap::decode(rows.bytes(rows.slot(map.slot)), place);
}

std::vector<std::uint32_t> pagesOf(Pager& pager, RowPointer pointer, const Place& from) {
  std::vector<std::uint32_t> pages;
  if (pointer == RowPointer{}) return pages;
  const UsageMap map = readUsageMap(pager, pointer, from);
  if (map.kind == UsageMap::Kind::Inline) {
    addSetBits(map.bits, map.firstPage, pager.pageCount(), pages);
    return pages;
  }
  const std::size_t range = pagesPerBitmap(pager.layout());
  for (std::size_t i = 0; i < map.bitmapPages.size() && i * range < pager.pageCount(); ++i) {
    if (map.bitmapPages[i] == 0) continue;
    const Pager::Page page = pager.read(map.bitmapPages[i], from.at(pointer.page));
    if ((*page)[0] != static_cast<std::uint8_t>(PageType::Bitmap))
      raiseDamaged(from.at(map.bitmapPages[i]), u"it is no bitmap of a usage map");
    addSetBits(ByteView(*page).subspan(UsageMap::kBitmapHead), i * range, pager.pageCount(), pages);
  }
  return pages;
}

}  // namespace jet
