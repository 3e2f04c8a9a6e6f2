#pragma once

#include <sqlite3.h>

#include "platform/jetsql/functions/Type.h"
#include "platform/runtime/Variant.h"

namespace jetsql {

/// A value of SQLite's: an integer of 32 bits, any other number as a double, a text, bytes. An
/// amount, which SQLite has in ten-thousandths, and a GUID are told by the type.
runtime::Variant sqlValue(sqlite3_value* value, Type type);

}  // namespace jetsql
