#pragma once

#include <vector>

#include "platform/jet/engine/TableSource.h"

namespace jet {

/// Bodies of moved rows that no row points to: a change was interrupted after it wrote the body, or
/// before it deleted the old one. Reads the entire table.
std::vector<RowPointer> strayBodies(const TableSource& source);

}  // namespace jet
