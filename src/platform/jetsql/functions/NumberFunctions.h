#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions that calculate, and the operators that SQLite lacks.
std::span<const Function> numberFunctions();

}  // namespace jetsql
