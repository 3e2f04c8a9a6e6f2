#include "platform/jet/engine/MappedPages.h"

#include <utility>

#include "platform/jet/format/Bits.h"
#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// How a page that is set in a map, but is beyond the end of the file, is treated.
enum class Outside { IsDamage, IsSkipped };

class Collector {
 public:
  Collector(const Pager& pager, Outside outside) : pager_(pager), outside_(outside) {}

  void addSetBits(ByteView bits, std::uint64_t first, const Location& from) {
    forEachSetBit(bits, [&](std::size_t bit) { add(first + bit, from); });
  }

  std::vector<PageNumber> pages;

 private:
  void add(std::uint64_t page, const Location& from) {
    if (page < pager_.pageCount())
      pages.emplace_back(page);
    else if (outside_ == Outside::IsDamage)
      pager_.raiseOutside(page, from);
  }

  const Pager& pager_;
  Outside outside_;
};

std::vector<PageNumber> pagesOf(Pager& pager, RowPointer pointer, const Location& from,
                                Outside outside) {
  if (pointer == RowPointer{}) return {};
  const UsageMap map = readUsageMap(pager, pointer, from);
  Collector collector(pager, outside);
  const Location location = from.at(pointer.page);
  if (map.kind == UsageMap::Kind::Inline) {
    collector.addSetBits(map.bits, map.firstPage.value(), location);
    return std::move(collector.pages);
  }
  const std::size_t perBitmap = pagesPerBitmap(pager.layout());
  for (std::size_t i = 0; i < map.bitmapPages.size(); ++i) {
    if (map.bitmapPages[i] == kNoPage) continue;
    if (outside == Outside::IsSkipped && i * perBitmap >= pager.pageCount()) break;
    const Pager::Page page = pager.read(map.bitmapPages[i], location);
    const Location bitmap = from.at(map.bitmapPages[i]);
    requireBitmap(*page, bitmap);
    collector.addSetBits(ByteView(*page).subspan(UsageMap::kBitmapPageBits), i * perBitmap, bitmap);
  }
  return std::move(collector.pages);
}

}  // namespace

UsageMap readUsageMap(Pager& pager, RowPointer map, const Location& from) {
  const Pager::Page page = pager.read(map.page, from);
  const Location location = from.at(map.page);
  const DataPage rows(pager.layout(), *page, location);
  return UsageMap::decode(rows.bytes(rows.slot(map.slot)), location);
}

std::vector<PageNumber> ownedPages(Pager& pager, RowPointer map, const Location& from) {
  return pagesOf(pager, map, from, Outside::IsDamage);
}

std::vector<PageNumber> pagesWithRoom(Pager& pager, RowPointer map, const Location& from) {
  return pagesOf(pager, map, from, Outside::IsSkipped);
}

void requireBitmap(ByteView page, const Location& location) {
  if (page[PageHead::kType] != static_cast<std::uint8_t>(PageType::Bitmap))
    raiseDamaged(location, u"it is no bitmap of a usage map");
}

}  // namespace jet
