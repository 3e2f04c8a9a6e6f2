#include "platform/jet/format/UsageMap.h"

namespace jet {

UsageMap UsageMap::decode(ByteView row, const Location& location) {
  if (row.size() < kBitmap)
    raiseDamaged(location, u"a usage map is too short", {.size = kBitmap, .available = row.size()});
  if (row[kKind] > static_cast<std::uint8_t>(Kind::Reference))
    raiseDamaged(location, u"a usage map is of no known kind");
  UsageMap map;
  map.kind = static_cast<Kind>(row[kKind]);
  if (map.kind == Kind::Inline) {
    map.firstPage = PageNumber(u32At(row, kFirstPage));
    map.bits.assign(row.begin() + kBitmap, row.end());
  } else {
    for (std::size_t at = kBitmapPages; at + kBitmapPageNumberSize <= row.size();
         at += kBitmapPageNumberSize)
      map.bitmapPages.emplace_back(u32At(row, at));
  }
  return map;
}

Bytes UsageMap::encode() const {
  const bool isInline = kind == Kind::Inline;
  Bytes row(isInline ? kBitmap + bits.size()
                     : kBitmapPages + bitmapPages.size() * kBitmapPageNumberSize);
  row[kKind] = static_cast<std::uint8_t>(kind);
  if (isInline) {
    putU32(row, kFirstPage, firstPage.value());
    putBytes(row, kBitmap, bits);
  }
  for (std::size_t i = 0; i < bitmapPages.size(); ++i)
    putU32(row, kBitmapPages + i * kBitmapPageNumberSize, bitmapPages[i].value());
  return row;
}

UsageMap UsageMap::empty(const Layout& layout) {
  UsageMap map;
  map.bits.resize(layout.defaultMapRow - kBitmap);
  return map;
}

bool UsageMap::contains(PageNumber page) const {
  return covers(page) && bitOf(bits, page.value() - firstPage.value());
}

void UsageMap::set(PageNumber page, bool value) {
  setBit(bits, page.value() - firstPage.value(), value);
}

Bytes newBitmapPage(const Layout& layout) {
  Bytes page(layout.pageSize);
  page[PageHead::kType] = static_cast<std::uint8_t>(PageType::Bitmap);
  page[PageHead::kMark] = PageHead::kLive;
  return page;
}

}  // namespace jet
