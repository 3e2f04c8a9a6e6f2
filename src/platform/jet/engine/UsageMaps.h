#pragma once

#include <cstdint>

#include "platform/jet/engine/PageAllocator.h"
#include "platform/jet/engine/UsageMapRows.h"

namespace jet {

/// Changes the usage maps of a table, of its indexes and of its long values: which pages belong to
/// which owner, and which of them have room.
class UsageMaps {
 public:
  UsageMaps(PageChanges& changes, const TableSource& source)
      : changes_(changes), source_(source), rows_(changes, source), pages_(changes, source) {}

  PageAllocator& pages() { return pages_; }

  bool contains(RowPointer map, PageNumber page);
  /// Adds a page to a map; the map grows as it needs to. Raises where there is no map.
  void add(RowPointer map, PageNumber page, WriteStep step);
  /// Makes a map cover a page that isn't in it, so that `hint` can add it. Raises as `add` does.
  void cover(RowPointer map, PageNumber page, WriteStep step);
  /// Removes a page from a map, if the map has it.
  void remove(RowPointer map, PageNumber page, WriteStep step);
  /// Records in a map of pages with room whether a page has room, as far as the map can cover it.
  void hint(RowPointer map, PageNumber page, bool hasRoom);

 private:
  bool coverWithoutBitmap(RowPointer at, PageNumber page, WriteStep step);
  bool shift(RowPointer at, const UsageMap& map, PageNumber page, WriteStep step);
  bool lengthen(RowPointer at, const UsageMap& map, PageNumber page, WriteStep step);
  void turnIntoReference(RowPointer at, WriteStep step);
  void addBitmap(RowPointer at, std::size_t bitmapIndex, WriteStep step);
  void set(RowPointer at, PageNumber page, bool value, WriteStep step);

  PageChanges& changes_;
  const TableSource& source_;
  UsageMapRows rows_;
  PageAllocator pages_;
};

}  // namespace jet
