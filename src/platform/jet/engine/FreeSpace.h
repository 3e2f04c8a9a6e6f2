#pragma once

#include <optional>
#include <vector>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/engine/UsageMaps.h"
#include "platform/jet/format/DataPage.h"

namespace jet {

/// Whose pages rows are put on.
struct PageOwner {
  std::uint32_t owner = 0;  ///< owner field of the pages
  RowPointer owned;         ///< usage map of all its pages
  RowPointer free;          ///< usage map of those that may have room
};

/// Finds room for new rows on the pages of an owner.
class FreeSpace {
 public:
  FreeSpace(PageChanges& changes, UsageMaps& maps, const TableSource& source, PageOwner owner)
      : changes_(changes), maps_(maps), source_(source), owner_(owner) {}

  /// Pages that may have room, the ones to be tried first in front.
  std::vector<std::uint32_t> candidates() const;
  /// Adds a row on the first candidate with room that isn't excluded, else on a new page.
  RowPointer add(ByteView row, SlotMark mark,
                 const std::vector<std::uint32_t>& excluded = {}) const;
  /// Says in the map of pages with room whether a page has some now.
  void note(std::uint32_t page) const;

 private:
  std::optional<RowPointer> addTo(std::uint32_t page, ByteView row, SlotMark mark) const;

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  PageOwner owner_;
};

}  // namespace jet
