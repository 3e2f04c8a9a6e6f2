#pragma once

#include <cstdint>

namespace runtime {

/// Seconds of a day, of which the fraction of a `Date` is a share.
inline constexpr std::int64_t kSecondsADay = 86'400;

}  // namespace runtime
