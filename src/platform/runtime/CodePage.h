#pragma once

#include <string>
#include <string_view>

namespace runtime {

/// Converts UTF-16 to windows-1252. The five undefined bytes (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to
/// and from U+0081 and so on; each 16-bit unit without a byte becomes "?".
std::string toCodePage(std::u16string_view text);
/// Converts windows-1252 to UTF-16; every byte maps to one character.
std::u16string fromCodePage(std::string_view bytes);

/// True for the units of surrogate pairs.
constexpr bool isSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDFFF;
}
/// True where a surrogate pair begins at that index.
constexpr bool isSurrogatePair(std::u16string_view text, std::size_t at) {
  return isSurrogate(text[at]) && text[at] < 0xDC00 && at + 1 < text.size() &&
         isSurrogate(text[at + 1]) && text[at + 1] >= 0xDC00;
}

/// Convert to and from UTF-8; malformed input becomes U+FFFD. For the host's names and streams.
std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view bytes);

}  // namespace runtime
