#include "platform/jet/engine/StrayBodies.h"

#include <algorithm>

#include "platform/jet/engine/MappedPages.h"

namespace jet {

std::vector<RowPointer> strayBodies(const TableSource& source) {
  const Location location = source.location(source.definitionPage);
  std::vector<RowPointer> bodies;
  std::vector<RowPointer> pointedTo;
  for (const PageNumber number : ownedPages(source.pager, source.definition.ownedPages, location)) {
    const OpenDataPage open = readDataPage(source, number, location);
    const DataPage& rows = open.rows;
    for (std::size_t i = 0; i < rows.slotCount(); ++i) {
      const SlotNumber slotNumber(i);
      const Slot slot = rows.slot(slotNumber);
      if (slot.isBody())
        bodies.push_back({number, slotNumber});
      else if (slot.isRow() && slot.pointer && slot.length >= RowPointer::kSize)
        pointedTo.push_back(rowPointerAt(rows.bytes(slot), MovedRow::kBody));
    }
  }
  std::ranges::sort(pointedTo);
  std::erase_if(bodies,
                [&](RowPointer body) { return std::ranges::binary_search(pointedTo, body); });
  return bodies;
}

}  // namespace jet
