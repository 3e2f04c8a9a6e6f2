#include "platform/jet/engine/TableScan.h"

#include <algorithm>

#include "platform/jet/engine/PageSet.h"
#include "platform/jet/format/DataPage.h"

namespace jet {

TableScan::TableScan(const TableSource& source)
    : source_(source),
      pages_(ownedPages(source.pager, source.definition.ownedPages,
                        source.place(source.definitionPage))) {}

bool TableScan::openNextPage() {
  if (nextPage_ == pages_.size()) return false;
  pageNumber_ = pages_[nextPage_++];
  page_ = readDataPage(source_, pageNumber_, source_.place(source_.definitionPage));
  slotCount_ = DataPage(source_.pager.layout(), *page_, source_.place(pageNumber_)).slotCount();
  slotCount_ = std::min(slotCount_, kMostSlots);
  nextSlot_ = 0;
  return true;
}

bool TableScan::next() {
  FoundRow found;
  for (;;) {
    while (nextSlot_ == slotCount_)
      if (!openNextPage()) return false;
    const RowId id{pageNumber_, SlotNumber(static_cast<std::uint8_t>(nextSlot_++))};
    if (!findRow(source_, id, page_, found)) continue;
    row_ = Row(source_, id, found);
    return true;
  }
}

}  // namespace jet
