#pragma once

#include <string>
#include <string_view>

namespace jetsql {

/// True for a pattern of a date or time.
bool isDatePattern(std::u16string_view pattern);

/// A date by a pattern: `d`, `dd`, `ddd`, `dddd`, `m` to `mmmm` (minutes after an hour), `yy`,
/// `yyyy`, `q` (quarter), `w` (weekday), `h`, `hh`, `n`, `nn`, `s`, `ss`, `AM/PM`, and the named
/// formats.
std::u16string formatDate(double days, std::u16string_view pattern);

}  // namespace jetsql
