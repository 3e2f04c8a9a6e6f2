#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions that calculate, and the operators that SQLite has not.
std::span<const Function> numberFunctions();

}  // namespace jetsql
