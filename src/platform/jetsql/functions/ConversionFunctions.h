#pragma once

#include <span>

#include "platform/jetsql/functions/SqlFunction.h"

namespace jetsql {

/// The functions that turn values into other types, and Format.
std::span<const SqlFunction> conversionFunctions();

/// An amount in whole ten-thousandths, rounded half to even. Raises the overflow error for one that
/// a Currency doesn't hold.
std::int64_t tenThousandths(double amount);

}  // namespace jetsql
