#pragma once

#include <cstdint>
#include <optional>

#include "platform/jet/engine/PageChanges.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace jet {

/// Takes pages for a table and gives them back, and keeps the usage maps that say whose they are.
class UsageMaps {
 public:
  UsageMaps(PageChanges& changes, const TableSource& source) : changes_(changes), source_(source) {}

  /// A page for new content: a free one of the file, else one behind its end. It is marked used and
  /// belongs to nobody yet.
  std::uint32_t takePage();
  /// Marks a page free again. One that the global map doesn't cover stays lost.
  void freePage(std::uint32_t page);

  bool contains(RowPointer map, std::uint32_t page);
  /// Adds a page to a map; the map grows as it needs to. Raises where there is no map.
  void add(RowPointer map, std::uint32_t page, WriteStep step);
  /// Takes a page out of a map, if it is in it.
  void remove(RowPointer map, std::uint32_t page, WriteStep step);
  /// Says in a map of pages with room whether a page has room, as far as the map reaches.
  void hint(RowPointer map, std::uint32_t page, bool hasRoom);

 private:
  UsageMap read(RowPointer at);
  Pager::Page readBitmap(std::uint32_t page);
  bool writeRow(RowPointer at, const UsageMap& map, std::size_t length, WriteStep step);
  void writeSameRow(RowPointer at, const UsageMap& map, WriteStep step);
  void setBitmapBit(std::uint32_t bitmap, std::size_t bit, bool value, WriteStep step);
  std::size_t rangeOf(const UsageMap& map, std::uint32_t page) const;

  bool shift(RowPointer at, const UsageMap& map, std::uint32_t page, WriteStep step);
  bool lengthen(RowPointer at, const UsageMap& map, std::uint32_t page, WriteStep step);
  void turnIntoReference(RowPointer at, WriteStep step);
  void addToReference(RowPointer at, std::uint32_t page, WriteStep step);

  std::optional<std::uint32_t> lowestFreePage();
  void markUsed(std::uint32_t page);
  bool lengthenGlobal(UsageMap map, std::uint32_t page);
  void turnGlobalIntoReference(const UsageMap& map);
  void addGlobalBitmap(UsageMap map, std::size_t range);

  PageChanges& changes_;
  const TableSource& source_;
};

}  // namespace jet
