#include "platform/jet/engine/IndexPath.h"

#include <algorithm>

#include "platform/jet/engine/IndexWalk.h"

namespace jet {

IndexPage openIndexPage(PageChanges& changes, const TableSource& source, PageNumber number,
                        const Location& from) {
  const Pager::Page page = changes.read(number, from);
  IndexPage open = IndexPage::decode(changes.layout(), *page, source.location(number));
  if (open.owner != source.definitionPage) raiseDamaged(source.location(number), kOtherIndex);
  return open;
}

std::size_t dropUpTo(IndexPage& page, ByteView bound) {
  if (bound.empty()) return 0;
  return std::erase_if(
      page.entries, [&](const IndexEntry& each) { return compareBytes(each.bytes, bound) <= 0; });
}

PageNumber lastLeafBelow(PageChanges& changes, const TableSource& source, PageNumber number,
                         PageNumber from) {
  for (int level = 0; level <= kMostIndexLevels; ++level) {
    const IndexPage page = openIndexPage(changes, source, number, source.location(from));
    if (page.leaf) return number;
    from = number;
    number = page.tail;
  }
  raiseDamaged(source.location(from), kNoLeaves);
}

namespace {

/// The leaf that precedes the path's in the tree, whatever the leaf's own link says; 0 for the
/// first.
PageNumber leafBefore(PageChanges& changes, const TableSource& source, const IndexPath& path) {
  const auto turn = std::find_if(path.nodes.rbegin(), path.nodes.rend(),
                                 [](const IndexPath::Node& node) { return node.child > 0; });
  if (turn == path.nodes.rend()) return kNoPage;
  return lastLeafBelow(changes, source, turn->page.entries[turn->child - 1].child, turn->number);
}

}  // namespace

IndexPath IndexPath::to(PageChanges& changes, const TableSource& source, IndexNumber index,
                        ByteView entry) {
  IndexPath path;
  Bytes bound;  // all entries below the next page are greater
  PageNumber number = source.index(index).root;
  Location from = source.location(source.definitionPage);
  for (int level = 0; level <= kMostIndexLevels; ++level) {
    IndexPage page = openIndexPage(changes, source, number, from);
    const std::size_t dropped = dropUpTo(page, bound);
    path.hadLeftovers = path.hadLeftovers || dropped > 0;
    from = source.location(number);
    if (page.leaf) {
      path.leafNumber = number;
      path.leaf = std::move(page);
      // A leaf left over from an interrupted change may precede it in the chain.
      const PageNumber before = leafBefore(changes, source, path);
      path.hadLeftovers = path.hadLeftovers || before != path.leaf.previous;
      path.leaf.previous = before;
      return path;
    }
    const std::size_t child = page.lowerBound(entry);
    if (child > 0) bound = page.entries[child - 1].bytes;
    path.nodes.push_back({number, std::move(page), child});
    const Node& node = path.nodes.back();
    number = node.followsTail() ? node.page.tail : node.page.entries[child].child;
  }
  raiseDamaged(from, kNoLeaves);
}

}  // namespace jet
