#include "makestore/IndexTree.h"

#include <algorithm>
#include <stdexcept>

#include "platform/jet/format/Layout.h"

namespace makestore {
namespace {

/// A child page and the greatest entry in it.
struct Child {
  jet::Bytes lastEntry;
  jet::PageNumber page;
};

/// Bytes of entries on a page of an index with several pages; a tenth of the page stays free for
/// later keys.
std::size_t usualFill(const jet::Layout& layout) {
  return layout.indexCapacity() * 9 / 10;
}

/// Size of a leaf's entries when all but the first leave out their common prefix. The prefix is
/// shorter than the shortest entry. The entries are in order, so the first and the last determine
/// it.
class PackedSize {
 public:
  explicit PackedSize(const jet::IndexEntry& first)
      : first_(&first), unpacked_(first.bytes.size()), shortest_(first.bytes.size()) {}

  /// The size if `next` were added.
  std::size_t with(const jet::IndexEntry& next) const {
    const std::size_t most = std::min({first_->bytes.size(), next.bytes.size(), shortest_}) - 1;
    const auto front = first_->bytes.begin();
    const auto common =
        std::mismatch(front, front + static_cast<std::ptrdiff_t>(most), next.bytes.begin()).first -
        front;
    return unpacked_ + next.bytes.size() - count_ * static_cast<std::size_t>(common);
  }
  void add(const jet::IndexEntry& next) {
    unpacked_ += next.bytes.size();
    shortest_ = std::min(shortest_, next.bytes.size());
    ++count_;
  }

 private:
  const jet::IndexEntry* first_;
  std::size_t unpacked_;
  std::size_t shortest_;
  std::size_t count_ = 1;
};

std::vector<jet::IndexPage> packedLeaves(const jet::Layout& layout,
                                         const std::vector<jet::IndexEntry>& entries) {
  std::vector<jet::IndexPage> leaves;
  for (std::size_t i = 0; i < entries.size();) {
    jet::IndexPage leaf;
    leaf.entries.push_back(entries[i]);
    PackedSize size(entries[i]);
    for (++i; i < entries.size() && size.with(entries[i]) <= layout.indexCapacity(); ++i) {
      size.add(entries[i]);
      leaf.entries.push_back(entries[i]);
    }
    leaves.push_back(std::move(leaf));
  }
  return leaves;
}

std::vector<jet::IndexPage> unpackedLeaves(const jet::Layout& layout,
                                           const std::vector<jet::IndexEntry>& entries) {
  std::size_t all = 0;
  for (const jet::IndexEntry& entry : entries) all += entry.bytes.size();
  const std::size_t fill = all <= layout.indexCapacity() ? all : usualFill(layout);
  std::vector<jet::IndexPage> leaves;
  std::size_t used = 0;
  for (const jet::IndexEntry& entry : entries) {
    if (leaves.empty() || used + entry.bytes.size() > fill) {
      leaves.emplace_back();
      used = 0;
    }
    used += entry.bytes.size();
    leaves.back().entries.push_back(entry);
  }
  return leaves;
}

/// Distributes the children over nodes, at least two to a node, so that each node has an entry
/// besides its tail.
std::vector<std::vector<Child>> groupChildren(const jet::Layout& layout,
                                              const std::vector<Child>& children) {
  std::vector<std::vector<Child>> groups;
  std::size_t used = 0;
  for (const Child& child : children) {
    const std::size_t size = child.lastEntry.size() + jet::kEntryChildSize;
    if (groups.empty() || used + size > usualFill(layout)) {
      groups.emplace_back();
      used = 0;
    }
    used += size;
    groups.back().push_back(child);
  }
  if (groups.size() > 1 && groups.back().size() == 1) {
    std::vector<Child>& before = groups[groups.size() - 2];
    groups.back().insert(groups.back().begin(), before.back());
    before.pop_back();
  }
  return groups;
}

std::vector<jet::IndexPage> nodesOver(const std::vector<std::vector<Child>>& groups,
                                      std::uint8_t level) {
  std::vector<jet::IndexPage> nodes;
  for (const std::vector<Child>& group : groups) {
    jet::IndexPage node;
    node.leaf = false;
    node.level = level;
    node.tail = group.back().page;
    for (std::size_t i = 0; i + 1 < group.size(); ++i)
      node.entries.push_back({group[i].lastEntry, group[i].page});
    nodes.push_back(std::move(node));
  }
  return nodes;
}

/// Allocates the pages of one level, links them in their order and writes them.
void putLevel(PageSpace& space, jet::PageNumber owner, std::vector<jet::IndexPage>& level,
              std::vector<jet::PageNumber>& numbers) {
  const std::size_t first = numbers.size();
  for (std::size_t i = 0; i < level.size(); ++i) numbers.push_back(space.allocate());
  for (std::size_t i = 0; i < level.size(); ++i) {
    level[i].owner = owner;
    level[i].previous = i == 0 ? jet::kNoPage : numbers[first + i - 1];
    level[i].next = i + 1 == level.size() ? jet::kNoPage : numbers[first + i + 1];
    std::optional<jet::Bytes> bytes = level[i].encode(space.layout());
    if (!bytes) throw std::length_error("an index entry is longer than its page");
    space.put(numbers[first + i], *std::move(bytes));
  }
}

}  // namespace

IndexTree buildIndex(PageSpace& space, jet::PageNumber owner,
                     const std::vector<jet::IndexEntry>& entries, bool packed) {
  IndexTree tree;
  std::vector<jet::IndexPage> level =
      packed ? packedLeaves(space.layout(), entries) : unpackedLeaves(space.layout(), entries);
  if (level.empty()) level.emplace_back();
  putLevel(space, owner, level, tree.pages);
  std::vector<Child> children;
  for (std::size_t i = 0; i < level.size() && level.size() > 1; ++i)
    children.push_back({level[i].entries.back().bytes, tree.pages[i]});
  for (std::uint8_t height = 1; children.size() > 1; ++height) {
    const std::vector<std::vector<Child>> groups = groupChildren(space.layout(), children);
    level = nodesOver(groups, height);
    const std::size_t first = tree.pages.size();
    putLevel(space, owner, level, tree.pages);
    children.clear();
    for (std::size_t i = 0; i < groups.size(); ++i)
      children.push_back({groups[i].back().lastEntry, tree.pages[first + i]});
  }
  tree.root = tree.pages.back();
  return tree;
}

}  // namespace makestore
