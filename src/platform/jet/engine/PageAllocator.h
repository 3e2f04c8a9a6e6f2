#pragma once

#include <cstdint>
#include <optional>

#include "platform/jet/engine/UsageMapRows.h"

namespace jet {

/// Allocates pages of the file and frees them, using the global map of free pages.
class PageAllocator {
 public:
  PageAllocator(PageChanges& changes, const TableSource& source)
      : changes_(changes), source_(source), maps_(changes, source) {}

  /// A page for new content: a free one of the file, else one beyond its end. It is marked used and
  /// has no owner yet.
  PageNumber take();
  /// Marks a page free again. A page that the global map doesn't cover is not used again.
  void free(PageNumber page);

 private:
  std::optional<PageNumber> lowestFree();
  void markUsed(PageNumber page);
  bool lengthen(UsageMap map, PageNumber page);
  void turnIntoReference(const UsageMap& map);
  void addBitmap(UsageMap map, std::size_t bitmapIndex);

  PageChanges& changes_;
  const TableSource& source_;
  UsageMapRows maps_;
};

}  // namespace jet
