#pragma once

#include <optional>
#include <set>
#include <vector>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/engine/UsageMaps.h"
#include "platform/jet/format/DataPage.h"

namespace jet {

/// The owner of the pages on which rows are stored.
struct PageOwner {
  PageNumber owner;  ///< owner field of the pages
  RowPointer owned;  ///< usage map of all its pages
  RowPointer free;   ///< usage map of those that may have room
};

/// Finds room for new rows on the pages of an owner, and records in its maps which have room left.
class FreeSpace {
 public:
  FreeSpace(PageChanges& changes, UsageMaps& maps, const TableSource& source, PageOwner owner)
      : changes_(changes), maps_(maps), source_(source), owner_(owner) {}

  /// Pages that may have room, in the order in which to try them.
  std::vector<PageNumber> candidates() const;
  /// Adds a row on the first candidate with room that isn't excluded, else on a new page.
  RowPointer add(ByteView row, SlotMark mark, const std::vector<PageNumber>& excluded = {});
  /// Remembers a page of the owner that was changed.
  void touch(PageNumber page) { touched_.insert(page); }
  /// Stages the new state of the changed pages in the map of pages with room. Call it last.
  void noteTouched();

 private:
  std::optional<RowPointer> addTo(PageNumber page, ByteView row, SlotMark mark);

  PageChanges& changes_;
  UsageMaps& maps_;
  const TableSource& source_;
  PageOwner owner_;
  std::set<PageNumber> touched_;
};

}  // namespace jet
