#pragma once

#include <span>

#include "platform/jetsql/functions/SqlFunction.h"

namespace jetsql {

/// The functions of texts, and Like.
std::span<const SqlFunction> textFunctions();

}  // namespace jetsql
