#pragma once

#include <string>
#include <string_view>

namespace jetsql {

/// A number by a pattern of `Format`: digits `0` and `#`, a point, commas for thousands, `%`, an
/// exponent (`E+`, `E-`), literals in quotes or behind a backslash, up to four sections between
/// semicolons (positive, negative, zero, null), or one of the named formats.
std::u16string formatNumber(double number, std::u16string_view pattern);

/// True for the name of a number's format.
bool isNumberName(std::u16string_view pattern);

/// What a pattern gives for null: its fourth section.
std::u16string formatNull(std::u16string_view pattern);

/// True for a pattern of a date or time.
bool isDatePattern(std::u16string_view pattern);

/// A date by a pattern: `d`, `dd`, `ddd`, `dddd`, `m` to `mmmm` (minutes behind an hour), `yy`,
/// `yyyy`, `h`, `hh`, `n`, `nn`, `s`, `ss`, `AM/PM`, and the named formats.
std::u16string formatDate(double days, std::u16string_view pattern);

}  // namespace jetsql
