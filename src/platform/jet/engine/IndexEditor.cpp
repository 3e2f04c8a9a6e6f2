#include "platform/jet/engine/IndexEditor.h"

#include <algorithm>

#include "platform/jet/engine/IndexSplit.h"
#include "platform/jet/engine/IndexWalk.h"

namespace jet {
namespace {

bool sameKey(const IndexEntry& a, const IndexEntry& b) {
  return compareBytes(a.key(), b.key()) == 0;
}

}  // namespace

IndexPath IndexEditor::pathTo(ByteView entry) {
  IndexPath path = IndexPath::to(changes_, source_, index_, entry);
  sawLeftovers_ = sawLeftovers_ || path.hadLeftovers;
  return path;
}

void IndexEditor::stage(WriteStep step, PageNumber number, const IndexPage& page) {
  std::optional<Bytes> bytes = page.encode(changes_.layout());
  if (!bytes)
    raiseUnsupported(source_.location(number), u"an index page has no room for its entries");
  changes_.stage(step, number, std::move(*bytes));
}

PageNumber IndexEditor::takePage() {
  const PageNumber page = maps_.pages().take();
  maps_.add(source_.index(index_).map, page, WriteStep::OwnerMaps);
  return page;
}

/// The page `number` with its link set to `to`; absent where it must not change. `of` is the page
/// that is split or removed, for which the link is changed. A node's link changes only where it
/// names `of`: not all programs link nodes.
std::optional<Bytes> IndexEditor::relinked(PageNumber number, Link link, PageNumber to,
                                           PageNumber of) {
  if (number == kNoPage || number.value() >= changes_.pageCount()) return std::nullopt;
  const Layout& layout = changes_.layout();
  const Pager::Page page = changes_.read(number, source_.location(of));
  const Pager::Page beside = changes_.read(of, source_.location(of));
  // Links of nodes may be outdated: the page that they name may have another use now.
  if ((*page)[PageHead::kType] != (*beside)[PageHead::kType] ||
      (*page)[layout.indexLevel] != (*beside)[layout.indexLevel] ||
      PageNumber(u32At(*page, PageHead::kOwner)) != source_.definitionPage)
    return std::nullopt;
  const std::size_t field = link == Link::Next ? layout.indexNext : layout.indexPrevious;
  const bool isLeaf = (*page)[PageHead::kType] == static_cast<std::uint8_t>(PageType::IndexLeaf);
  const PageNumber old(u32At(*page, field));
  if (old == to || (!isLeaf && old != of)) return std::nullopt;
  Bytes changed = *page;
  putU32(changed, field, to.value());
  return changed;
}

/// The leaf before the path's leaf may still be linked to one that an interrupted change left.
void IndexEditor::repairLinkToLeaf(const IndexPath& path, WriteStep step) {
  const PageNumber before = path.leaf.previous;
  if (std::optional<Bytes> page = relinked(before, Link::Next, path.leafNumber, path.leafNumber))
    changes_.stage(step, before, std::move(*page));
}

/// True when neither neighbour in order has the key of the entry at `at`; they may be in the
/// adjacent leaves.
bool IndexEditor::isNewKey(const IndexPath& path, std::size_t at) {
  const IndexPage& leaf = path.leaf;
  const auto sameBeside = [&](PageNumber number, bool last) {
    if (number == kNoPage) return false;
    const IndexPage beside = open(number, path.leafNumber);
    if (!beside.leaf || beside.entries.empty()) return false;
    return sameKey(last ? beside.entries.back() : beside.entries.front(), leaf.entries[at]);
  };
  const bool before =
      at > 0 ? sameKey(leaf.entries[at - 1], leaf.entries[at]) : sameBeside(leaf.previous, true);
  if (before) return false;
  return at + 1 < leaf.entries.size() ? !sameKey(leaf.entries[at + 1], leaf.entries[at])
                                      : !sameBeside(leaf.next, false);
}

IndexEditor::Insertion IndexEditor::insert(const IndexEntry& entry) {
  IndexPath path = pathTo(entry.bytes);
  const std::size_t at = path.leaf.lowerBound(entry.bytes);
  if (path.leaf.hasAt(at, entry.bytes)) {
    sawLeftovers_ = true;
    return Insertion::AlreadyThere;
  }
  path.leaf.entries.insert(path.leaf.entries.begin() + static_cast<std::ptrdiff_t>(at), entry);
  const bool newKey = isNewKey(path, at);
  repairLinkToLeaf(path, WriteStep::InsertEntries);
  if (std::optional<Bytes> bytes = path.leaf.encode(changes_.layout()))
    changes_.stage(WriteStep::InsertEntries, path.leafNumber, std::move(*bytes));
  else if (path.nodes.empty())
    growRoot(path.leafNumber, path.leaf, at);
  else
    splitLeaf(path, at);
  return newKey ? Insertion::NewKey : Insertion::KnownKey;
}

/// The new page takes the lower half and precedes the leaf, which keeps its number, and with it its
/// entry in the parent. First the leaf before is linked to the new page, then the parent lists it,
/// and only then does the old leaf drop the lower half: until then nothing can be lost.
void IndexEditor::splitLeaf(IndexPath& path, std::size_t inserted) {
  const IndexPage& leaf = path.leaf;
  const bool ascending = leaf.next == kNoPage && inserted + 1 == leaf.entries.size();
  SplitIndexPage halves =
      splitIndexPage(changes_.layout(), leaf, ascending, source_.location(path.leafNumber));
  const PageNumber added = takePage();
  halves.first.previous = leaf.previous;
  halves.first.next = path.leafNumber;
  halves.second.previous = added;
  halves.second.next = leaf.next;
  stage(WriteStep::NewPages, added, halves.first);
  if (std::optional<Bytes> page = relinked(leaf.previous, Link::Next, added, path.leafNumber))
    changes_.stage(WriteStep::InsertEntries, leaf.previous, std::move(*page));
  changes_.barrier(WriteStep::InsertEntries);
  insertInParent(path, path.nodes.size() - 1, {std::move(halves.bound), added});
  changes_.barrier(WriteStep::InsertEntries);
  stage(WriteStep::InsertEntries, path.leafNumber, halves.second);
}

/// Inserts the entry for a new child before the child that the path follows.
void IndexEditor::insertInParent(IndexPath& path, std::size_t depth, IndexEntry entry) {
  IndexPath::Node& node = path.nodes[depth];
  node.page.entries.insert(node.page.entries.begin() + static_cast<std::ptrdiff_t>(node.child),
                           std::move(entry));
  if (std::optional<Bytes> bytes = node.page.encode(changes_.layout()))
    changes_.stage(WriteStep::InsertEntries, node.number, std::move(*bytes));
  else if (depth == 0)
    growRoot(node.number, node.page, node.child);
  else
    splitNode(path, depth);
}

/// As for a leaf: the node drops its lower half once its own parent lists the new node.
void IndexEditor::splitNode(IndexPath& path, std::size_t depth) {
  const IndexPath::Node& node = path.nodes[depth];
  SplitIndexPage halves =
      splitIndexPage(changes_.layout(), node.page, false, source_.location(node.number));
  const PageNumber added = takePage();
  halves.first.previous = node.page.previous;
  halves.first.next = node.number;
  halves.second.previous = added;
  halves.second.next = node.page.next;
  stage(WriteStep::NewPages, added, halves.first);
  if (std::optional<Bytes> page = relinked(node.page.previous, Link::Next, added, node.number))
    changes_.stage(WriteStep::InsertEntries, node.page.previous, std::move(*page));
  insertInParent(path, depth - 1, {std::move(halves.bound), added});
  changes_.barrier(WriteStep::InsertEntries);
  stage(WriteStep::InsertEntries, node.number, halves.second);
}

/// The root keeps its number: its entries move to two new pages, and it becomes their parent.
void IndexEditor::growRoot(PageNumber root, const IndexPage& page, std::size_t inserted) {
  if (page.level >= kMostIndexLevels)
    raiseDamaged(source_.location(root), u"an index has too many levels");
  const bool ascending = page.leaf && inserted + 1 == page.entries.size();
  SplitIndexPage halves =
      splitIndexPage(changes_.layout(), page, ascending, source_.location(root));
  const PageNumber first = takePage();
  const PageNumber second = takePage();
  halves.first.next = second;
  halves.second.previous = first;
  stage(WriteStep::NewPages, first, halves.first);
  stage(WriteStep::NewPages, second, halves.second);
  IndexPage parent;
  parent.leaf = false;
  parent.owner = page.owner;
  parent.level = static_cast<std::uint8_t>(page.level + 1);
  parent.tail = second;
  parent.entries.push_back({std::move(halves.bound), first});
  stage(WriteStep::InsertEntries, root, parent);
}

void IndexEditor::removeOld(RowId row, const KeyChange& change) {
  if (change.oldEntry && !sawLeftovers_) {
    const Bytes& old = *change.oldEntry;
    IndexPath path = pathTo(old);
    const std::size_t at = path.leaf.lowerBound(old);
    const bool found = path.leaf.hasAt(at, old);
    if (found && !sawLeftovers_) removeAt(path, at);
    if (found && !sawLeftovers_) return;
  }
  clean(row, change.newEntry);
}

/// Stages a page that may reach the disk only after the removal itself: in `DropOld`, which saves a
/// sync, or after an interrupted change in order with the other repairs.
void IndexEditor::stageAfterRemoval(PageNumber number, Bytes page) {
  WriteStep step = WriteStep::DropOld;
  if (sawLeftovers_) {
    changes_.barrier(WriteStep::RemoveEntries);
    step = WriteStep::RemoveEntries;
  }
  changes_.stage(step, number, std::move(page));
}

void IndexEditor::removeAt(IndexPath& path, std::size_t at) {
  std::vector<IndexEntry>& entries = path.leaf.entries;
  const bool wasLast = at + 1 == entries.size();
  entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(at));
  if (entries.empty() && !path.nodes.empty()) {
    unlink(path, path.nodes.size());
    return;
  }
  repairLinkToLeaf(path, WriteStep::RemoveEntries);
  stage(WriteStep::RemoveEntries, path.leafNumber, path.leaf);
  if (wasLast && !entries.empty()) tightenBound(path, path.nodes.size(), entries.back().bytes);
}

/// The page at `depth` of the path has a new last entry: it becomes the bound in the nearest
/// ancestor that has an entry for the page. Where it is longer than the old bound and doesn't fit,
/// the old one stays: searches are correct with a bound that is too large.
void IndexEditor::tightenBound(IndexPath& path, std::size_t depth, const Bytes& last) {
  while (depth-- > 0) {
    IndexPath::Node& node = path.nodes[depth];
    if (node.followsTail()) continue;
    if (node.page.entries[node.child].bytes == last) return;
    trimNextTo(node);
    node.page.entries[node.child].bytes = last;
    if (std::optional<Bytes> bytes = node.page.encode(changes_.layout()))
      stageAfterRemoval(node.number, std::move(*bytes));
    return;
  }
}

/// Called before the bound between the node's child and the page after it is tightened or removed.
/// An interrupted split may have left entries up to this bound in the pages that follow it, one
/// page on each level. Drops them: without the bound they would belong to the tree again.
void IndexEditor::trimNextTo(const IndexPath::Node& node) {
  const std::size_t next = node.child + 1;
  const Bytes bound = node.page.entries[node.child].bytes;
  PageNumber number =
      next < node.page.entries.size() ? node.page.entries[next].child : node.page.tail;
  PageNumber from = node.number;
  for (int level = 0; level <= kMostIndexLevels; ++level) {
    IndexPage page = open(number, from);
    // A leaf without a valid entry stays as it is: it must not be empty.
    if (dropUpTo(page, bound) > 0 && !(page.leaf && page.entries.empty())) {
      sawLeftovers_ = true;
      // Its link to the page before it is outdated too.
      if (page.leaf)
        page.previous =
            lastLeafBelow(changes_, source_, node.page.entries[node.child].child, node.number);
      stage(WriteStep::RemoveEntries, number, page);
      changes_.barrier(WriteStep::RemoveEntries);
    }
    if (page.leaf) return;
    from = number;
    number = page.entries.empty() ? page.tail : page.entries[0].child;
  }
  raiseDamaged(source_.location(from), kNoLeaves);
}

/// Removes the empty page at `depth` of the path from the tree; it isn't written itself. First its
/// parent changes, then the links around it and the index's map; the page is free once both are on
/// the disk.
void IndexEditor::unlink(IndexPath& path, std::size_t depth) {
  const bool leaf = depth == path.nodes.size();
  const PageNumber number = leaf ? path.leafNumber : path.nodes[depth].number;
  const IndexPage& empty = leaf ? path.leaf : path.nodes[depth].page;
  IndexPath::Node& parent = path.nodes[depth - 1];
  std::vector<IndexEntry>& entries = parent.page.entries;
  if (!parent.followsTail()) {
    trimNextTo(parent);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(parent.child));
    stage(WriteStep::RemoveEntries, parent.number, parent.page);
  } else if (!entries.empty()) {
    const Bytes last = entries.back().bytes;
    parent.page.tail = entries.back().child;
    entries.pop_back();
    parent.child = entries.size();
    stage(WriteStep::RemoveEntries, parent.number, parent.page);
    tightenBound(path, depth - 1, last);
  } else if (depth > 1) {
    unlink(path, depth - 1);
  } else {
    IndexPage root;
    root.owner = parent.page.owner;
    stage(WriteStep::RemoveEntries, parent.number, root);
  }
  if (std::optional<Bytes> page = relinked(empty.previous, Link::Next, empty.next, number))
    stageAfterRemoval(empty.previous, std::move(*page));
  if (std::optional<Bytes> page = relinked(empty.next, Link::Previous, empty.previous, number))
    stageAfterRemoval(empty.next, std::move(*page));
  maps_.remove(source_.index(index_).map, number, WriteStep::DropOld);
  maps_.pages().free(number);
}

void IndexEditor::collectLeaves(PageNumber number, PageNumber from, const Bytes& bound, int level,
                                std::vector<TreeLeaf>& leaves) {
  if (level > kMostIndexLevels || leaves.size() > changes_.pageCount())
    raiseDamaged(source_.location(from), u"an index leads in a circle");
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

void IndexEditor::clean(RowId row, const std::optional<Bytes>& kept) {
  sawLeftovers_ = true;
  std::vector<TreeLeaf> leaves;
  collectLeaves(source_.index(index_).root, source_.definitionPage, {}, 0, leaves);
  std::vector<Bytes> others;
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    IndexPage leaf = open(leaves[i].number, source_.definitionPage);
    const PageNumber previous = i == 0 ? kNoPage : leaves[i - 1].number;
    const PageNumber next = i + 1 == leaves.size() ? kNoPage : leaves[i + 1].number;
    std::size_t dropped = dropUpTo(leaf, leaves[i].bound);
    if (dropped > 0 && leaf.entries.empty()) {
      // None of its entries is valid, but a leaf of the tree must not be empty.
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
  changes_.barrier(WriteStep::RemoveEntries);
  for (const Bytes& entry : others) {
    IndexPath path = pathTo(entry);
    const std::size_t at = path.leaf.lowerBound(entry);
    if (path.leaf.hasAt(at, entry)) removeAt(path, at);
  }
}

}  // namespace jet
