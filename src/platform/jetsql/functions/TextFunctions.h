#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions of texts, and Like.
std::span<const Function> textFunctions();

}  // namespace jetsql
