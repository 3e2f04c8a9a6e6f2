#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/engine/PageChanges.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/IndexPage.h"

namespace jet {

/// The path from an index's root to the leaf where an entry belongs, all pages decoded for change.
/// Entries that an interrupted split left in a page are dropped: those not greater than the
/// parent's entry for the page before it.
struct IndexPath {
  struct Node {
    PageNumber number;
    IndexPage page;
    std::size_t child = 0;  ///< index of the entry that was followed; after the last: the tail

    bool followsTail() const { return child == page.entries.size(); }
  };
  std::vector<Node> nodes;  ///< from the root down; none where the root is the leaf
  PageNumber leafNumber;
  IndexPage leaf;
  bool hadLeftovers = false;  ///< entries were dropped or the leaf's `previous` corrected

  static IndexPath to(PageChanges& changes, const TableSource& source, IndexNumber index,
                      ByteView entry);
};

/// Reads a page of an index of this table. Raises damage where the page isn't one.
IndexPage openIndexPage(PageChanges& changes, const TableSource& source, PageNumber number,
                        const Location& from);

/// The last leaf below a page, which may be that leaf itself; `from` leads to the page.
PageNumber lastLeafBelow(PageChanges& changes, const TableSource& source, PageNumber number,
                         PageNumber from);

/// Drops the entries of a page that are not greater than `bound` and returns their number; an empty
/// bound drops none. Only an interrupted split leaves such entries.
std::size_t dropUpTo(IndexPage& page, ByteView bound);

}  // namespace jet
