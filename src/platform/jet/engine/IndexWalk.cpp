#include "platform/jet/engine/IndexWalk.h"

namespace jet {

void IndexWalk::openLeaf(PageNumber number, const Location& from) {
  open_ = source_.pager.readIndexPage(number, from);
  pageNumber_ = number;
  leaf_ = &open_->view;
  if (leaf_->owner() != source_.definitionPage) raiseDamaged(source_.location(number), kOtherIndex);
}

IndexWalk::IndexWalk(const TableSource& source, IndexNumber index, ByteView from)
    : source_(source) {
  openLeaf(source.index(index).root, source.location(source.definitionPage));
  for (int level = 0; !leaf_->isLeaf(); ++level) {
    if (level == kMostIndexLevels) raiseDamaged(source.location(pageNumber_), kNoLeaves);
    const std::size_t at = leaf_->lowerBound(from);
    openLeaf(at < leaf_->size() ? leaf_->child(at) : leaf_->tail(), source.location(pageNumber_));
  }
  at_ = leaf_->lowerBound(from);
}

bool IndexWalk::next() {
  for (;;) {
    while (at_ == leaf_->size()) {
      const PageNumber next = leaf_->next();
      if (next == kNoPage) return false;
      if (++leavesSeen_ > source_.pager.pageCount())
        raiseDamaged(source_.location(pageNumber_), u"the leaves of an index lead in a circle");
      openLeaf(next, source_.location(pageNumber_));
      if (!leaf_->isLeaf()) raiseDamaged(source_.location(next), u"it is no leaf of an index");
      at_ = 0;
    }
    const std::size_t at = at_++;
    if (!first_ && leaf_->compare(at, entry_.bytes) <= 0) continue;
    leaf_->copyEntry(at, entry_);
    first_ = false;
    return true;
  }
}

}  // namespace jet
