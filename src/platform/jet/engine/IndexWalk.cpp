#include "platform/jet/engine/IndexWalk.h"

namespace jet {

void IndexWalk::openPage(PageNumber number, const Location& from) {
  open_ = source_.pager.readIndexPage(number, from);
  pageNumber_ = number;
  view_ = &open_->view;
  if (view_->owner() != source_.definitionPage) raiseDamaged(source_.location(number), kOtherIndex);
}

IndexWalk::IndexWalk(const TableSource& source, IndexNumber index, ByteView from)
    : source_(source) {
  openPage(source.index(index).root, source.location(source.definitionPage));
  for (int level = 0; !view_->isLeaf(); ++level) {
    if (level == kMostIndexLevels) raiseDamaged(source.location(pageNumber_), kNoLeaves);
    const std::size_t at = view_->lowerBound(from);
    openPage(at < view_->size() ? view_->child(at) : view_->tail(), source.location(pageNumber_));
  }
  at_ = view_->lowerBound(from);
}

bool IndexWalk::next() {
  for (;;) {
    while (at_ == view_->size()) {
      const PageNumber next = view_->next();
      if (next == kNoPage) return false;
      if (++leavesSeen_ > source_.pager.pageCount())
        raiseDamaged(source_.location(pageNumber_), u"the leaves of an index lead in a circle");
      openPage(next, source_.location(pageNumber_));
      if (!view_->isLeaf()) raiseDamaged(source_.location(next), u"it is no leaf of an index");
      at_ = 0;
    }
    const std::size_t at = at_++;
    if (!first_ && view_->compare(at, entry_.bytes) <= 0) continue;
    view_->copyEntry(at, entry_);
    first_ = false;
    return true;
  }
}

}  // namespace jet
