#pragma once

#include <span>
#include <string_view>

#include "platform/jet/engine/ObjectCatalog.h"
#include "platform/jetsql/syntax/ParsedQuery.h"

namespace jetsql {

/// Builds a saved query from its stored rows. Raises the engine's error for a query that is no
/// SELECT or UNION, that takes parameters, or whose rows are inconsistent; `name` is for its text.
ParsedQuery queryFromRows(std::u16string_view name, std::span<const jet::QueryRow> rows);

}  // namespace jetsql
