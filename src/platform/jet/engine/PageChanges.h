#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/jet/engine/Pager.h"

namespace jet {

/// The steps of a change, in the order in which their pages reach the disk. After a stop between
/// any two page writes, and after a power cut that keeps any of the writes since the last sync,
/// every row is readable, and every index finds it by its right key.
enum class WriteStep : std::uint8_t {
  TakePages,      ///< global map: the pages to be taken are no longer free
  NewPages,       ///< their content, and a moved row's body: nothing refers to them yet
  OwnerMaps,      ///< the maps of the new pages' owners
  InsertEntries,  ///< the new index entries; the old ones stay
  Counters,       ///< the entry counters in the definition
  Rows,           ///< the row itself changes in one page write
  RemoveEntries,  ///< the old index entries
  DropOld,        ///< old bodies and long values; tightened bounds; links and maps of pages that
                  ///< were removed from an index
  Hints,          ///< maps of pages with room and of free pages: any of these writes may be lost
};

/// The pages that a change writes. All are computed in memory before the first write, so that a
/// change is refused with the file untouched.
class PageChanges {
 public:
  explicit PageChanges(Pager& pager);

  Pager& pager() { return pager_; }
  const Layout& layout() const { return pager_.layout(); }
  /// Pages of the file, including those that the change adds.
  std::uint32_t pageCount() const { return pageCount_; }
  /// Makes the file a page longer; returns the page's number. Raises an error where the file
  /// already has the largest size of its generation.
  PageNumber addPage(const Location& from);

  /// A page as the change leaves it so far; see `Pager::read`.
  Pager::Page read(PageNumber number, const Location& from);
  /// Puts a page's new content into a step. The page must not have been staged in a later step: the
  /// changes of one page reach the disk in the order in which they were staged. No page is
  /// allocated once one has been freed: both change the global map, and would do so in the wrong
  /// order.
  void stage(WriteStep step, PageNumber number, Bytes page);
  /// The same for a page of usage maps, which may hold maps that change in different steps. A page
  /// that was staged in a later step already is staged there again, before everything that is
  /// staged in that step from now on.
  void stageMap(WriteStep step, PageNumber number, Bytes page);
  /// Within the step, everything staged so far reaches the disk before anything that is staged from
  /// now on. Costs a sync unless one of the two is empty.
  void barrier(WriteStep step);

  bool empty() const { return latest_.empty(); }
  /// Writes all pages, step by step, with a sync after each step that wrote one. `TakePages` and
  /// `NewPages` share a sync; `Hints` has none.
  void commit();

 private:
  static constexpr std::size_t kSteps = 9;
  struct Write {
    PageNumber number;
    Pager::Page page;
  };
  struct Latest {
    WriteStep step = WriteStep::TakePages;
    Pager::Page page;
  };
  using Group = std::vector<Write>;  ///< writes without a sync between them

  std::vector<Group>& groupsOf(WriteStep step) { return steps_[static_cast<std::size_t>(step)]; }
  void write(const Group& group, std::uint32_t& end);

  Pager& pager_;
  std::uint32_t pageCount_;
  std::array<std::vector<Group>, kSteps> steps_;
  std::map<PageNumber, Latest> latest_;
};

}  // namespace jet
