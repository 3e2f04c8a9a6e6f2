#pragma once

#include <string>
#include <string_view>

namespace jetsql {

/// A number by a pattern of `Format`: digits `0` and `#`, a point, commas for thousands, `%`, an
/// exponent (`E+`, `E-`), literals in quotes or after a backslash, up to four sections between
/// semicolons (positive, negative, zero, null), or one of the named formats.
std::u16string formatNumber(double number, std::u16string_view pattern);

/// True for the name of a number's format.
bool isNumberName(std::u16string_view pattern);

/// Null by a pattern: its fourth section.
std::u16string formatNull(std::u16string_view pattern);

}  // namespace jetsql
