#include "platform/jet/engine/IndexCursor.h"

#include <algorithm>

namespace jet {

IndexCursor::IndexCursor(const TableSource& source, IndexNumber index, const IndexRange& range)
    : source_(source),
      index_(index),
      key_(source, index),
      range_(keyRange(source, key_, range)),
      reader_(source) {
  if (!range_.isEmpty) walk_.emplace(source, index, range_.from);
}

bool IndexCursor::isStale() {
  const Row& row = reader_.row();
  if (source_.index(index_).ignoresNulls() && key_.isAllNull(row)) return true;
  // Which entry of such a row is the valid one can't be known: the first one counts.
  if (!key_.make(row, rowKey_)) return !withoutKey_.insert(row.id()).second;
  const Bytes& entry = walk_->entry();
  if (entry.size() == rowKey_.size() + kEntryRowSize &&
      std::equal(rowKey_.begin(), rowKey_.end(), entry.begin()))
    return false;
  // The entry is stale only if the row has another one under its own key: returning a row under a
  // key that differs from ours is better than losing it.
  const Bytes own = IndexEntry::of(rowKey_, row.id()).bytes;
  IndexWalk lookup(source_, index_, own);
  return lookup.next() && lookup.entry() == own;
}

bool IndexCursor::next() {
  while (walk_ && walk_->next()) {
    if (range_.before && compareBytes(walk_->entry(), *range_.before) >= 0) break;
    if (reader_.find(walk_->row()) && !isStale()) return true;
  }
  walk_.reset();
  return false;
}

}  // namespace jet
