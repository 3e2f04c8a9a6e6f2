#include "platform/jet/engine/StrayBodies.h"

#include <algorithm>

#include "platform/jet/engine/PageSet.h"
#include "platform/jet/format/DataPage.h"

namespace jet {

std::vector<RowPointer> strayBodies(const TableSource& source) {
  const Location location = source.location(source.definitionPage);
  std::vector<RowPointer> bodies;
  std::vector<RowPointer> pointedTo;
  for (const PageNumber number : ownedPages(source.pager, source.definition.ownedPages, location)) {
    const Pager::Page page = readDataPage(source, number, location);
    const DataPage rows(source.pager.layout(), *page, source.location(number));
    for (std::size_t i = 0; i < std::min(rows.slotCount(), kMostSlots); ++i) {
      const Slot slot = rows.slot(i);
      if (slot.isBody())
        bodies.push_back({number, SlotNumber(static_cast<std::uint8_t>(i))});
      else if (slot.isRow() && slot.pointer && slot.length >= 4)
        pointedTo.push_back(RowPointer::unpack(u32At(rows.bytes(slot), 0)));
    }
  }
  std::ranges::sort(pointedTo);
  std::erase_if(bodies,
                [&](RowPointer body) { return std::ranges::binary_search(pointedTo, body); });
  return bodies;
}

}  // namespace jet
