#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace runtime {

/// Converts text to a signed 16-bit integer by the platform's rules. Accepts surrounding blanks, a
/// sign before or after, parentheses for a negative number, "$", commas between digits, decimals,
/// exponents, and the bit pattern in hexadecimal or octal digits after "&H" or "&O". Rounds half to
/// even. Raises TypeMismatch for any other text (also the empty one), Overflow beyond the range.
std::int16_t toInteger(std::u16string_view text);

/// The same to a signed 32-bit integer.
std::int32_t toLong(std::u16string_view text);

/// The same to a 64-bit floating point number, without rounding.
double toDouble(std::u16string_view text);

/// Converts a number to a signed 16-bit integer, rounded half to even; Overflow beyond the range.
std::int16_t toInteger(double number);
std::int16_t toInteger(std::int32_t number);

/// Converts a number to a signed 32-bit integer, rounded half to even; Overflow beyond the range.
std::int32_t toLong(double number);

/// The number at the start of the text, 0 if there is none; the rest is ignored. Blanks, tabs and
/// line feeds are skipped anywhere; "&H" and "&O" are accepted before the number. Raises only
/// Overflow, beyond the range of a double.
double leadingNumber(std::u16string_view text);

/// An integer as decimal text, with zeros in front up to `width` characters.
std::u16string toText(std::int64_t number, std::size_t width = 0);

}  // namespace runtime
