#pragma once

#include <span>

#include "platform/jetsql/functions/SqlFunction.h"

namespace jetsql {

/// The functions that calculate, and the operators that SQLite has not.
std::span<const SqlFunction> numberFunctions();

}  // namespace jetsql
