#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace runtime {

/// Text is counted in 16-bit units. Lengths are signed, as on the platform: a negative one raises
/// InvalidProcedureCall, one beyond the text's end takes what there is.

/// The leftmost `length` units.
std::u16string left(std::u16string_view text, std::ptrdiff_t length);
/// The rightmost `length` units.
std::u16string right(std::u16string_view text, std::ptrdiff_t length);
/// Spaces (U+0020, nothing else) dropped from both ends.
std::u16string trim(std::u16string_view text);
/// `count` spaces.
std::u16string spaces(std::size_t count);

/// The text with every letter, an accented one too, made comparable without regard to case. For
/// names of files, sections, keys and fields; the store's texts compare by their own order.
std::u16string foldCase(std::u16string_view text);
/// The text with its capital letters made small.
std::u16string lowerCase(std::u16string_view text);

/// One unit as a capital or a small letter, in all scripts and whatever the user's own locale is; a
/// unit that has none, or none in 16 bits, stays.
char16_t upperCase(char16_t unit);
char16_t lowerCase(char16_t unit);

}  // namespace runtime
