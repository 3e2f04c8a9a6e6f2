#pragma once

#include <sqlite3.h>

#include "platform/jetsql/functions/Type.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

/// A calculated value of SQLite's as its type has it. Raises the overflow error for a number that
/// the type doesn't hold.
runtime::Variant calculatedValue(sqlite3_value* value, Type type);

}  // namespace jetsql
