#pragma once

#include <span>

#include "platform/jetsql/functions/Function.h"

namespace jetsql {

/// The functions that convert values to other types, and Format.
std::span<const Function> conversionFunctions();

/// Converts an amount to ten-thousandths, rounded half to even. Raises the overflow error for one
/// that a Currency doesn't hold.
std::int64_t tenThousandths(double amount);

}  // namespace jetsql
