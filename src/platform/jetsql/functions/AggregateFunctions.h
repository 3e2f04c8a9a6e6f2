#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions over the rows of a group: First, Last, StDev, Var and so on, and those that a
/// written statement needs internally.
std::span<const Function> aggregateFunctions();

}  // namespace jetsql
