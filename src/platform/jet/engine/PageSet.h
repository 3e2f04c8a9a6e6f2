#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace jet {

/// The usage map that a row pointer names. Raises damage where there is none.
UsageMap readUsageMap(Pager& pager, RowPointer map, const Place& from);

/// The pages that are set in the map of those that a table owns, ascending; none for a null
/// pointer. Raises damage where the file ends before one of them: rows have gone with it.
std::vector<PageNumber> ownedPages(Pager& pager, RowPointer map, const Place& from);

/// The same for the map of those with room for a row, which is a hint only: a page that the file
/// doesn't have is passed over.
std::vector<PageNumber> pagesWithRoom(Pager& pager, RowPointer map, const Place& from);

}  // namespace jet
