// The half of IndexEditor that puts entries in: leaves, splits, and the root that grows.

#include <algorithm>

#include "platform/jet/engine/IndexEditor.h"
#include "platform/jet/engine/IndexTree.h"

namespace jet {
namespace {

using Entries = std::vector<IndexEntry>;

IndexPage like(const IndexPage& page, Entries entries) {
  IndexPage part;
  part.leaf = page.leaf;
  part.owner = page.owner;
  part.level = page.level;
  part.entries = std::move(entries);
  return part;
}

/// A page cut in two: both halves, and the entry for the first in their parent.
struct Halves {
  IndexPage first;
  IndexPage second;
  Bytes bound;
};

/// Cuts a page in front of entry `cut`; a node's entry there goes up and its child becomes the
/// first half's tail.
Halves cutAt(const IndexPage& page, std::size_t cut) {
  const auto middle = page.entries.begin() + static_cast<std::ptrdiff_t>(cut);
  Halves halves;
  halves.first = like(page, Entries(page.entries.begin(), middle));
  if (page.leaf) {
    halves.second = like(page, Entries(middle, page.entries.end()));
    halves.bound = halves.first.entries.back().bytes;
  } else {
    halves.second = like(page, Entries(middle + 1, page.entries.end()));
    halves.first.tail = middle->child;
    halves.second.tail = page.tail;
    halves.bound = middle->bytes;
  }
  return halves;
}

/// The cut with halves of about one size; next to the end where entries are added in order.
std::size_t preferredCut(const IndexPage& page, bool ascending) {
  if (ascending) return page.entries.size() - 1;
  std::size_t all = 0;
  for (const IndexEntry& entry : page.entries) all += entry.bytes.size();
  std::size_t cut = 0;
  for (std::size_t size = 0; size < all / 2; ++cut) size += page.entries[cut].bytes.size();
  return cut;
}

/// Cuts a page that is too full, as near to the preferred cut as both halves fit.
Halves split(const Layout& layout, const IndexPage& page, bool ascending, const Place& place) {
  // Neither half may be empty, and a node gives one entry away.
  const std::size_t last = page.entries.size() - (page.leaf ? 1 : 2);
  if (page.entries.size() >= (page.leaf ? 2U : 3U)) {
    const std::size_t preferred =
        std::clamp<std::size_t>(preferredCut(page, ascending && page.leaf), 1, last);
    for (std::size_t away = 0; away <= last; ++away) {
      for (const std::size_t cut : {preferred - away, preferred + away}) {
        if (cut < 1 || cut > last) continue;
        Halves halves = cutAt(page, cut);
        if (halves.first.encode(layout) && halves.second.encode(layout)) return halves;
      }
    }
  }
  raiseUnsupported(place, u"an index page can't be split for so long a key");
}

bool sameKey(const IndexEntry& a, const IndexEntry& b) {
  return compareBytes(a.key(), b.key()) == 0;
}

}  // namespace

void IndexEditor::stage(WriteStep step, std::uint32_t number, const IndexPage& page) {
  std::optional<Bytes> bytes = page.encode(changes_.layout());
  if (!bytes) raiseUnsupported(source_.place(number), u"an index page has no room for its entries");
  changes_.stage(step, number, std::move(*bytes));
}

std::uint32_t IndexEditor::takePage() {
  const std::uint32_t page = maps_.takePage();
  maps_.add(source_.definition.indexes[index_].map, page, WriteStep::OwnerMaps);
  return page;
}

/// True when neither neighbour in order has the key of the entry at `at`; they may stand in the
/// leaves beside.
bool IndexEditor::isNewKey(const IndexPath& path, std::size_t at) {
  const IndexPage& leaf = path.leaf;
  const auto sameBeside = [&](std::uint32_t number, bool last) {
    if (number == 0) return false;
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
  const std::size_t at = placeOf(path.leaf, entry.bytes);
  if (standsAt(path.leaf, at, entry.bytes)) {
    sawLeftovers_ = true;
    return Insertion::AlreadyThere;
  }
  path.leaf.entries.insert(path.leaf.entries.begin() + static_cast<std::ptrdiff_t>(at), entry);
  const bool newKey = isNewKey(path, at);
  setNext(path.leaf.previous, path.leafNumber, path.leafNumber, WriteStep::InsertEntries);
  if (std::optional<Bytes> bytes = path.leaf.encode(changes_.layout()))
    changes_.stage(WriteStep::InsertEntries, path.leafNumber, std::move(*bytes));
  else if (path.nodes.empty())
    growRoot(path.leafNumber, path.leaf, at);
  else
    splitLeaf(path, at);
  return newKey ? Insertion::NewKey : Insertion::KnownKey;
}

/// The new page takes the lower half and stands in front of the leaf, which keeps its number, and
/// with it its place in the parent. The shortened leaf is written last.
void IndexEditor::splitLeaf(IndexPath& path, std::size_t inserted) {
  const IndexPage& leaf = path.leaf;
  const bool ascending = leaf.next == 0 && inserted + 1 == leaf.entries.size();
  Halves halves = split(changes_.layout(), leaf, ascending, source_.place(path.leafNumber));
  const std::uint32_t added = takePage();
  halves.first.previous = leaf.previous;
  halves.first.next = path.leafNumber;
  halves.second.previous = added;
  halves.second.next = leaf.next;
  stage(WriteStep::NewPages, added, halves.first);
  setNext(leaf.previous, added, path.leafNumber, WriteStep::InsertEntries);
  insertInParent(path, path.nodes.size() - 1, {std::move(halves.bound), added});
  stage(WriteStep::InsertEntries, path.leafNumber, halves.second);
}

/// Puts the entry for a new child in front of the child that the path follows.
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

void IndexEditor::splitNode(IndexPath& path, std::size_t depth) {
  const IndexPath::Node& node = path.nodes[depth];
  Halves halves = split(changes_.layout(), node.page, false, source_.place(node.number));
  const std::uint32_t added = takePage();
  halves.first.previous = node.page.previous;
  halves.first.next = node.number;
  halves.second.previous = added;
  halves.second.next = node.page.next;
  stage(WriteStep::NewPages, added, halves.first);
  setNext(node.page.previous, added, node.number, WriteStep::InsertEntries);
  insertInParent(path, depth - 1, {std::move(halves.bound), added});
  stage(WriteStep::InsertEntries, node.number, halves.second);
}

/// The root keeps its number: its entries move to two new pages, and it becomes their parent.
void IndexEditor::growRoot(std::uint32_t root, const IndexPage& page, std::size_t inserted) {
  if (page.level >= kMostIndexLevels)
    raiseDamaged(source_.place(root), u"an index has too many levels");
  const bool ascending = page.leaf && inserted + 1 == page.entries.size();
  Halves halves = split(changes_.layout(), page, ascending, source_.place(root));
  const std::uint32_t first = takePage();
  const std::uint32_t second = takePage();
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

}  // namespace jet
