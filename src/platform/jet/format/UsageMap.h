#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// A usage map's row: the set of pages that belong to something, or that are free.
struct UsageMap {
  enum class Kind : std::uint8_t {
    Inline = 0,     ///< a window of pages as a bitmap in the row itself
    Reference = 1,  ///< page numbers of bitmap pages, each for a fixed range of pages
  };
  /// Bytes in front of an inline map's bitmap.
  static constexpr std::size_t kInlineHead = 5;
  static constexpr std::size_t kReferenceHead = 1;
  /// Bytes in front of a bitmap page's bits.
  static constexpr std::size_t kBitmapHead = 4;

  Kind kind = Kind::Inline;
  std::uint32_t firstPage = 0;             ///< inline: page of the first bit
  Bytes bits;                              ///< inline: the bitmap
  std::vector<std::uint32_t> bitmapPages;  ///< reference: 0 where a range has no bitmap page

  /// Raises damage where the row is no map.
  static UsageMap decode(ByteView row, const Place& place);
  Bytes encode() const;
  /// An inline map without pages, with the usual length of its row.
  static UsageMap empty(const Layout& layout);

  /// Inline: pages that the window covers, and whether it covers one.
  std::size_t windowSize() const { return 8 * bits.size(); }
  bool covers(std::uint32_t page) const {
    return page >= firstPage && page - firstPage < windowSize();
  }
  bool contains(std::uint32_t page) const;   ///< inline; false outside the window
  void set(std::uint32_t page, bool value);  ///< inline, inside the window
};

/// Pages that one bitmap page covers.
inline std::size_t pagesPerBitmap(const Layout& layout) {
  return 8 * (layout.pageSize - UsageMap::kBitmapHead);
}
/// A bitmap page without bits.
Bytes newBitmapPage(const Layout& layout);
bool bitOf(ByteView bits, std::size_t number);
void setBit(ByteSpan bits, std::size_t number, bool value);

}  // namespace jet
