// The half of IndexEditor that takes entries out: bounds that follow, and pages that run empty.

#include "platform/jet/engine/IndexEditor.h"
#include "platform/jet/engine/IndexTree.h"

namespace jet {

bool IndexEditor::remove(ByteView entry) {
  IndexPath path = pathTo(entry);
  const std::size_t at = placeOf(path.leaf, entry);
  if (!standsAt(path.leaf, at, entry)) return false;
  removeAt(path, at);
  return true;
}

void IndexEditor::removeAt(IndexPath& path, std::size_t at) {
  std::vector<IndexEntry>& entries = path.leaf.entries;
  const bool wasLast = at + 1 == entries.size();
  entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(at));
  if (entries.empty() && !path.nodes.empty()) {
    unlink(path, path.nodes.size());
    return;
  }
  setNext(path.leaf.previous, path.leafNumber, path.leafNumber, WriteStep::RemoveEntries);
  stage(WriteStep::RemoveEntries, path.leafNumber, path.leaf);
  if (wasLast && !entries.empty()) lowerBound(path, path.nodes.size(), entries.back().bytes);
}

/// The page at `depth` of the path has a new last entry: the first parent that lists the way there
/// in an entry gets it. Where it is longer than the old one and doesn't fit, the old bound stays:
/// a bound that is too large is searched rightly.
void IndexEditor::lowerBound(IndexPath& path, std::size_t depth, const Bytes& last) {
  while (depth-- > 0) {
    IndexPath::Node& node = path.nodes[depth];
    if (node.followsTail()) continue;
    if (node.page.entries[node.child].bytes == last) return;
    shortenBehind(node, node.page.entries[node.child].bytes);
    node.page.entries[node.child].bytes = last;
    if (std::optional<Bytes> bytes = node.page.encode(changes_.layout()))
      changes_.stage(WriteStep::RemoveEntries, node.number, std::move(*bytes));
    return;
  }
}

void IndexEditor::shortenBehind(const IndexPath::Node& node, ByteView bound) {
  const std::size_t behind = node.child + 1;
  const Bytes kept(bound.begin(), bound.end());
  std::uint32_t number =
      behind < node.page.entries.size() ? node.page.entries[behind].child : node.page.tail;
  std::uint32_t from = node.number;
  for (int level = 0; level <= kMostIndexLevels; ++level) {
    IndexPage page = open(number, from);
    // A leaf of which nothing counts stays as it is: it may not be empty.
    if (dropUpTo(page, kept) > 0 && !(page.leaf && page.entries.empty())) {
      sawLeftovers_ = true;
      // It doesn't know the page in front of it either.
      if (page.leaf)
        page.previous =
            lastLeafBelow(changes_, source_, node.page.entries[node.child].child, node.number);
      stage(WriteStep::RemoveEntries, number, page);
    }
    if (page.leaf) return;
    from = number;
    number = page.entries.empty() ? page.tail : page.entries[0].child;
  }
  raiseDamaged(source_.place(from), u"an index has no leaves");
}

/// Takes the empty page at `depth` of the path out of the tree; it isn't written itself.
void IndexEditor::unlink(IndexPath& path, std::size_t depth) {
  const bool leaf = depth == path.nodes.size();
  const std::uint32_t number = leaf ? path.leafNumber : path.nodes[depth].number;
  const IndexPage& empty = leaf ? path.leaf : path.nodes[depth].page;
  IndexPath::Node& parent = path.nodes[depth - 1];
  std::vector<IndexEntry>& entries = parent.page.entries;
  if (!parent.followsTail()) {
    shortenBehind(parent, entries[parent.child].bytes);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(parent.child));
    stage(WriteStep::RemoveEntries, parent.number, parent.page);
  } else if (!entries.empty()) {
    const Bytes last = entries.back().bytes;
    parent.page.tail = entries.back().child;
    entries.pop_back();
    parent.child = entries.size();
    stage(WriteStep::RemoveEntries, parent.number, parent.page);
    lowerBound(path, depth - 1, last);
  } else if (depth > 1) {
    unlink(path, depth - 1);
  } else {
    IndexPage root;
    root.owner = parent.page.owner;
    stage(WriteStep::RemoveEntries, parent.number, root);
  }
  setNext(empty.previous, empty.next, number, WriteStep::RemoveEntries);
  setPrevious(empty.next, empty.previous, number, WriteStep::RemoveEntries);
  maps_.remove(source_.definition.indexes[index_].map, number, WriteStep::RemoveEntries);
  maps_.freePage(number);
}

}  // namespace jet
