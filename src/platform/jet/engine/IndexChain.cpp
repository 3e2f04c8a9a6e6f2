// The part of IndexEditor that keeps the chain of leaves, and mends what interrupted changes left.

#include "platform/jet/engine/IndexEditor.h"
#include "platform/jet/engine/IndexTree.h"

namespace jet {

IndexPath IndexEditor::pathTo(ByteView entry) {
  IndexPath path = IndexPath::to(changes_, source_, index_, entry);
  sawLeftovers_ = sawLeftovers_ || path.hadLeftovers;
  return path;
}

void IndexEditor::setLink(std::uint32_t number, std::size_t field, std::uint32_t value,
                          std::uint32_t of, WriteStep step) {
  if (number == 0 || number >= changes_.pageCount()) return;
  const Pager::Page page = changes_.read(number, source_.place(of));
  const Pager::Page beside = changes_.read(of, source_.place(of));
  const std::size_t level = changes_.layout().indexLevel;
  // Links of nodes may be old: what stood there can be another page by now.
  if ((*page)[0] != (*beside)[0] || (*page)[level] != (*beside)[level] ||
      u32At(*page, 4) != source_.definitionPage)
    return;
  const bool isLeaf = (*page)[0] == static_cast<std::uint8_t>(PageType::IndexLeaf);
  const std::uint32_t old = u32At(*page, field);
  if (old == value || (!isLeaf && old != of)) return;
  Bytes changed = *page;
  putU32(changed, field, value);
  changes_.stage(step, number, std::move(changed));
}

void IndexEditor::setNext(std::uint32_t number, std::uint32_t next, std::uint32_t of,
                          WriteStep step) {
  setLink(number, changes_.layout().indexNext, next, of, step);
}

void IndexEditor::setPrevious(std::uint32_t number, std::uint32_t previous, std::uint32_t of,
                              WriteStep step) {
  setLink(number, changes_.layout().indexPrevious, previous, of, step);
}

void IndexEditor::collectLeaves(std::uint32_t number, std::uint32_t from, const Bytes& bound,
                                int level, std::vector<TreeLeaf>& leaves) {
  if (level > kMostIndexLevels || leaves.size() > changes_.pageCount())
    raiseDamaged(source_.place(from), u"an index leads in a circle");
  IndexPage page = open(number, from);
  if (page.leaf) {
    leaves.push_back({number, bound});
    return;
  }
  if (dropUpTo(page, bound) > 0) stage(WriteStep::RemoveEntries, number, page);
  Bytes lower = bound;
  for (const IndexEntry& entry : page.entries) {
    if (!lower.empty() && compareBytes(entry.bytes, lower) <= 0) continue;
    collectLeaves(entry.child, number, lower, level + 1, leaves);
    lower = entry.bytes;
  }
  collectLeaves(page.tail, number, lower, level + 1, leaves);
}

void IndexEditor::clean(RowPointer row, const std::optional<Bytes>& kept) {
  std::vector<TreeLeaf> leaves;
  collectLeaves(source_.definition.indexes[index_].root, source_.definitionPage, {}, 0, leaves);
  std::vector<Bytes> others;
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    IndexPage leaf = open(leaves[i].number, source_.definitionPage);
    const std::uint32_t previous = i == 0 ? 0 : leaves[i - 1].number;
    const std::uint32_t next = i + 1 == leaves.size() ? 0 : leaves[i + 1].number;
    std::size_t dropped = dropUpTo(leaf, leaves[i].bound);
    if (dropped > 0 && leaf.entries.empty()) {
      // Nothing of it counts, but a leaf of the tree may not be empty.
      leaf = open(leaves[i].number, source_.definitionPage);
      dropped = 0;
    }
    for (const IndexEntry& entry : leaf.entries)
      if (entry.row() == row && entry.bytes != kept) others.push_back(entry.bytes);
    if (dropped == 0 && leaf.previous == previous && leaf.next == next) continue;
    leaf.previous = previous;
    leaf.next = next;
    stage(WriteStep::RemoveEntries, leaves[i].number, leaf);
  }
  for (const Bytes& entry : others) remove(entry);
}

}  // namespace jet
