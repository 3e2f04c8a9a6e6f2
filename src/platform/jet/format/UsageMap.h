#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/jet/format/Bits.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// A usage map's row: the set of pages that belong to one owner, or that are free.
struct UsageMap {
  enum class Kind : std::uint8_t {
    Inline = 0,     ///< a window of pages as a bitmap in the row itself
    Reference = 1,  ///< page numbers of bitmap pages, each for a fixed range of pages
  };
  // Offsets in the row.
  static constexpr std::size_t kKind = 0;         ///< u8, a Kind
  static constexpr std::size_t kFirstPage = 1;    ///< inline: u32, page of the first bit
  static constexpr std::size_t kBitmap = 5;       ///< inline: the bits, low bit first
  static constexpr std::size_t kBitmapPages = 1;  ///< reference: u32 each, 0 where there is none
  static constexpr std::size_t kBitmapPageNumberSize = 4;  ///< reference: of each number
  /// Offset in a bitmap page.
  static constexpr std::size_t kBitmapPageBits = 4;
  static constexpr std::size_t kGrowth = 4;

  Kind kind = Kind::Inline;
  PageNumber firstPage;                 ///< inline: page of the first bit
  Bytes bits;                           ///< inline: the bitmap
  std::vector<PageNumber> bitmapPages;  ///< reference: 0 where a range has no bitmap page

  /// Raises damage where the row is no map.
  static UsageMap decode(ByteView row, const Location& location);
  Bytes encode() const;
  /// An inline map without pages, with the usual length of its row.
  static UsageMap empty(const Layout& layout);

  /// Bytes of an inline map's bitmap for that many pages. Maps grow by `kGrowth` bytes.
  static constexpr std::size_t bitmapSize(std::size_t pages) {
    return (bytesOfBits(pages) + kGrowth - 1) / kGrowth * kGrowth;
  }
  /// Inline: numbers of bitmap pages that the row would hold as a reference map.
  std::size_t referencesThatFit() const {
    return (kBitmap + bits.size() - kBitmapPages) / kBitmapPageNumberSize;
  }
  /// Inline: pages that the window covers, the page of a bit, and whether it covers a page.
  std::size_t windowSize() const { return kByteBits * bits.size(); }
  PageNumber pageOf(std::size_t bit) const { return PageNumber(firstPage.value() + bit); }
  bool covers(PageNumber page) const {
    return page >= firstPage && page.value() - firstPage.value() < windowSize();
  }
  bool contains(PageNumber page) const;   ///< inline; false outside the window
  void set(PageNumber page, bool value);  ///< inline, inside the window
};

/// Pages that one bitmap page covers.
inline std::size_t pagesPerBitmap(const Layout& layout) {
  return kByteBits * (layout.pageSize - UsageMap::kBitmapPageBits);
}
/// A bitmap page without bits.
Bytes newBitmapPage(const Layout& layout);

}  // namespace jet
