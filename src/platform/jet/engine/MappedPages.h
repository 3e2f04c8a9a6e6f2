#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace jet {

/// The usage map at a row pointer. Raises damage where there is none.
UsageMap readUsageMap(Pager& pager, RowPointer map, const Location& from);

/// The pages that are set in a table's map of owned pages, ascending; none for a null pointer.
/// Raises damage where the file ends before one of them: its rows are lost.
std::vector<PageNumber> ownedPages(Pager& pager, RowPointer map, const Location& from);

/// The same for the map of pages with room for a row. That map is a hint only: pages beyond the end
/// of the file are skipped.
std::vector<PageNumber> pagesWithRoom(Pager& pager, RowPointer map, const Location& from);

/// Raises damage where a page isn't one that continues a usage map.
void requireBitmap(ByteView page, const Location& location);

}  // namespace jet
