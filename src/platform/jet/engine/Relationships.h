#pragma once

#include <span>

#include "platform/jet/engine/Constraints.h"
#include "platform/jet/engine/ObjectCatalog.h"

namespace jet {

/// Raises the engine's error where the change would break a relationship.
void checkRelationships(ObjectCatalog& catalog, const TableSource& source, const Row& before,
                        const Row& after, std::span<const KeyChange> changes);

}  // namespace jet
