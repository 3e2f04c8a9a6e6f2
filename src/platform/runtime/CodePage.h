#pragma once

#include <string>
#include <string_view>

namespace runtime {

/// Converts wide text to bytes of the machine's code page (windows-1252). The five bytes that the
/// page leaves open (0x81, 0x8D, 0x8F, 0x90, 0x9D) stand for U+0081 and so on; each 16-bit unit
/// that the page can't express becomes "?".
std::string toCodePage(std::u16string_view text);
/// Converts bytes of the machine's code page to wide text; every byte has a character.
std::u16string fromCodePage(std::string_view bytes);

/// True for the first, or the second, half of a pair that stands for a character beyond 16 bits.
constexpr bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Convert to and from UTF-8; malformed input becomes U+FFFD. For the host's names and streams.
std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view bytes);

}  // namespace runtime
