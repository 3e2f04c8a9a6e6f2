#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/UsageMap.h"

namespace jet {

/// The usage map that a row pointer names. Raises damage where there is none.
UsageMap readUsageMap(Pager& pager, RowPointer map, const Place& from);

/// The pages that are set in a usage map, ascending, as far as the file has them; none for a null
/// pointer.
std::vector<std::uint32_t> pagesOf(Pager& pager, RowPointer map, const Place& from);

}  // namespace jet
