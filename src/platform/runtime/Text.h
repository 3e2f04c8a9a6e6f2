#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace runtime {

/// Lengths are in 16-bit units, and signed as on the platform: a negative length raises
/// InvalidProcedureCall, one beyond the end of the text returns all of it.

/// The leftmost `length` units.
std::u16string left(std::u16string_view text, std::ptrdiff_t length);
/// The rightmost `length` units.
std::u16string right(std::u16string_view text, std::ptrdiff_t length);
/// The text without spaces (U+0020, nothing else) at both ends.
std::u16string trim(std::u16string_view text);
/// `count` spaces.
std::u16string spaces(std::size_t count);

/// The text with all letters, including accented ones, folded to one case for comparison. For names
/// of files, sections and keys; texts of a store are compared by its sort order instead.
std::u16string foldCase(std::u16string_view text);
/// The text in lower case.
std::u16string lowerCase(std::u16string_view text);

/// One unit in upper or lower case, in all scripts and independent of the user's locale; a unit
/// without such a form in 16 bits stays.
char16_t upperCase(char16_t unit);
char16_t lowerCase(char16_t unit);

/// True for 0 to 9, no other script's digits.
constexpr bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
/// The value of a digit of base 8, 10 or 16, its letters in either case; absent for another unit.
std::optional<int> digitValue(char16_t unit, int base);
/// True for A to Z and a to z.
constexpr bool isAsciiLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}
/// ASCII text in 16-bit units.
std::u16string widened(std::string_view ascii);
/// The lowest `count` hexadecimal digits of a number, in upper case.
std::u16string hexDigits(unsigned number, std::size_t count);

}  // namespace runtime
