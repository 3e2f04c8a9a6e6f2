#pragma once

#include <span>

#include "platform/jetsql/functions/SqlFunction.h"

namespace jetsql {

/// The functions of dates and times.
std::span<const SqlFunction> dateFunctions();

}  // namespace jetsql
