#include "platform/jet/engine/TableScan.h"

#include <algorithm>

#include "platform/jet/engine/MappedPages.h"

namespace jet {
namespace {

/// A file server answers one read of so many bytes nearly as soon as one of a page.
constexpr std::size_t kRunSize = 64 * 1024;

}  // namespace

TableScan::TableScan(const TableSource& source)
    : source_(source),
      pages_(ownedPages(source.pager, source.definition.ownedPages,
                        source.location(source.definitionPage))) {}

bool TableScan::openNextPage() {
  source_.pager.setScanned(pageNumber_);
  if (nextPage_ == pages_.size()) return false;
  pageNumber_ = pages_[nextPage_++];
  const Location from = source_.location(source_.definitionPage);
  source_.pager.readRun(pageNumber_, endOfRun(), from);
  open_ = readDataPage(source_, pageNumber_, from);
  nextSlot_ = 0;
  return true;
}

/// The last of the table's pages that a run from the current page covers. The run includes pages of
/// other tables between them: the pages of tables that grew together alternate.
PageNumber TableScan::endOfRun() const {
  const std::size_t pages = kRunSize / source_.pager.layout().pageSize;
  const PageNumber reached(pageNumber_.value() + pages - 1);
  return *std::prev(std::ranges::upper_bound(pages_, reached));
}

bool TableScan::next() {
  for (;;) {
    while (!open_ || nextSlot_ == open_->rows.slotCount())
      if (!openNextPage()) return false;
    const RowId id{pageNumber_, SlotNumber(nextSlot_++)};
    if (!findRow(source_, id, *open_, found_)) continue;
    row_ = Row(source_, id, found_);
    return true;
  }
}

}  // namespace jet
