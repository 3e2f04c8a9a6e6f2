#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "platform/jet/engine/Pager.h"

namespace jet {

/// The steps of a change, in the order in which their pages reach the disk. After a stop between
/// any two page writes every row is readable and found through every index by its right key.
enum class WriteStep : std::uint8_t {
  TakePages,      ///< global map: the pages to be taken are no longer free
  NewPages,       ///< their content, and a moved row's body: nothing refers to them yet
  OwnerMaps,      ///< the maps of those that the new pages belong to
  InsertEntries,  ///< the new index entries; the old ones stay
  Counters,       ///< the entry counters in the definition
  Rows,           ///< the row itself flips in one page write
  RemoveEntries,  ///< the old index entries
  FreeSpace,      ///< old bodies, maps of pages with room, pages that are free again
};

/// The pages that a change writes, computed completely in memory before the first write, so that
/// whatever can be refused is refused with the file untouched.
class PageChanges {
 public:
  explicit PageChanges(Pager& pager);

  Pager& pager() { return pager_; }
  const Layout& layout() const { return pager_.layout(); }
  /// Pages of the file, with those that the change adds.
  std::uint32_t pageCount() const { return pageCount_; }
  /// Makes the file a page longer; gives the page's number. Raises the error of a full file.
  std::uint32_t addPage(const Place& from);

  /// A page as the change leaves it so far; see `Pager::read`.
  Pager::Page read(std::uint32_t number, const Place& from);
  /// Puts a page's new content into a step, or into the latest step that has already changed it:
  /// what a page is given later never reaches the disk before what it was given earlier.
  void stage(WriteStep step, std::uint32_t number, Bytes page);

  bool empty() const { return latest_.empty(); }
  /// Writes all pages, step by step; the disk has one step before the next begins, but for the
  /// first two, which are one group.
  void commit();

 private:
  static constexpr std::size_t kSteps = 8;
  struct Write {
    std::uint32_t number = 0;
    Pager::Page page;
  };
  struct Latest {
    WriteStep step = WriteStep::TakePages;
    Pager::Page page;
  };

  bool endsGroup(std::size_t step) const;

  Pager& pager_;
  std::uint32_t pageCount_;
  std::array<std::vector<Write>, kSteps> steps_;
  std::map<std::uint32_t, Latest> latest_;
};

}  // namespace jet
