#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace runtime {

/// Converts text to a signed 16-bit integer by the platform's numeric text rules: surrounding
/// blanks, a sign, decimals and exponents are accepted, a fraction is rounded half to even.
/// Raises TypeMismatch for a text that is no number (the empty text too), Overflow beyond the
/// range.
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

/// The leading-number conversion: the number at the front of the text, 0 where there is none.
/// Blanks, tabs and line feeds are skipped anywhere in the text; the prefixes "&H" and "&O" are
/// accepted. Raises only Overflow, for a number beyond the range of a double.
double leadingNumber(std::u16string_view text);

/// An integer as decimal text, without padding.
std::u16string toText(std::int32_t number);

}  // namespace runtime
