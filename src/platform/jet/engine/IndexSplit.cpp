#include "platform/jet/engine/IndexSplit.h"

#include <algorithm>

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

/// Cuts a page before entry `cut`; a node's entry there moves to the parent and its child becomes
/// the first half's tail.
SplitIndexPage cutAt(const IndexPage& page, std::size_t cut) {
  const auto middle = page.entries.begin() + static_cast<std::ptrdiff_t>(cut);
  SplitIndexPage halves;
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

/// The cut with halves of about the same size, or before the last entry for ascending additions.
std::size_t preferredCut(const IndexPage& page, bool ascending) {
  if (ascending) return page.entries.size() - 1;
  std::size_t all = 0;
  for (const IndexEntry& entry : page.entries) all += entry.bytes.size();
  std::size_t cut = 0;
  for (std::size_t size = 0; size < all / 2; ++cut) size += page.entries[cut].bytes.size();
  return cut;
}

}  // namespace

SplitIndexPage splitIndexPage(const Layout& layout, const IndexPage& page, bool ascending,
                              const Location& location) {
  // Neither half may be empty, and a node loses one entry to its parent.
  const std::size_t last = page.entries.size() - (page.leaf ? 1 : 2);
  if (page.entries.size() >= (page.leaf ? 2U : 3U)) {
    const std::size_t preferred =
        std::clamp<std::size_t>(preferredCut(page, ascending && page.leaf), 1, last);
    for (std::size_t away = 0; away <= last; ++away) {
      // A difference below 0 wraps around, and so is above `last`.
      for (const std::size_t cut : {preferred - away, preferred + away}) {
        if (cut < 1 || cut > last) continue;
        SplitIndexPage halves = cutAt(page, cut);
        if (halves.first.encode(layout) && halves.second.encode(layout)) return halves;
      }
    }
  }
  raiseUnsupported(location, u"an index page can't be split for so long a key");
}

}  // namespace jet
