#pragma once

#include <cstdint>

#include "platform/jet/engine/PageChanges.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace jet {

/// The rows and bitmap pages of usage maps, including the staged changes. Each write is staged at
/// once: a map that was read before may be out of date after any other change of a map.
class UsageMapRows {
 public:
  UsageMapRows(PageChanges& changes, const TableSource& source)
      : changes_(changes), source_(source) {}

  UsageMap read(RowPointer at);
  /// Reads a bitmap page. Raises damage where the page isn't one.
  Pager::Page readBitmap(PageNumber page);
  /// Writes a map's row with at least that length; false where its page has no room for it.
  bool write(RowPointer at, const UsageMap& map, std::size_t length, WriteStep step);
  /// Writes a map's row with the length that it has.
  void writeInPlace(RowPointer at, const UsageMap& map, WriteStep step);
  void setBitmapBit(PageNumber bitmap, std::size_t bit, bool value, WriteStep step);

  /// The entry of a reference map for a page. Raises where the map has none.
  std::size_t bitmapIndexOf(const UsageMap& map, PageNumber page) const;
  /// The bitmap page of a reference map for a page; 0 where there is none.
  PageNumber bitmapFor(const UsageMap& map, PageNumber page) const;
  /// The bit of a page on its bitmap page.
  std::size_t bitOnBitmap(PageNumber page) const;

 private:
  PageChanges& changes_;
  const TableSource& source_;
};

}  // namespace jet
