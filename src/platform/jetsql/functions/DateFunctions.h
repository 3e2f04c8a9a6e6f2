#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions of dates and times.
std::span<const Function> dateFunctions();

}  // namespace jetsql
