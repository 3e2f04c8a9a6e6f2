#include "platform/runtime/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <unordered_map>

#include "platform/runtime/RunTimeError.h"

namespace runtime {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr char16_t kAsciiEnd = 0x80;  // below it, each character is its own byte

/// The C library's conversion table of the code page, read once.
class CodePage {
 public:
  static const CodePage& instance() {
    static const CodePage page;
    return page;
  }

  char16_t character(char byte) const { return characters_[static_cast<unsigned char>(byte)]; }

  char byte(char16_t unit) const {
    if (unit < kAsciiEnd) return static_cast<char>(unit);
    const auto found = bytes_.find(unit);
    return found == bytes_.end() ? '?' : found->second;
  }

 private:
  CodePage() {
    const iconv_t converter = iconv_open("UTF-16LE", "WINDOWS-1252");
    // iconv_open returns -1 on failure.
    if (converter == reinterpret_cast<iconv_t>(-1)) throw RunTimeError(ErrorNumber::InternalError);
    for (int value = 0; value < 256; ++value) {
      const char16_t unit = converted(converter, value);
      characters_[static_cast<std::size_t>(value)] = unit;
      bytes_.emplace(unit, static_cast<char>(value));
    }
    iconv_close(converter);
  }

  /// The character of one byte. The converter rejects the five bytes that the code page doesn't
  /// define; they map to the character of the same value.
  static char16_t converted(iconv_t converter, int value) {
    char in = static_cast<char>(value);
    std::array<unsigned char, 2> out{};
    char* from = &in;
    char* to = reinterpret_cast<char*>(out.data());
    std::size_t fromLeft = 1;
    std::size_t toLeft = out.size();
    if (iconv(converter, &from, &fromLeft, &to, &toLeft) == static_cast<std::size_t>(-1))
      return static_cast<char16_t>(value);
    return static_cast<char16_t>(out[0] | out[1] << 8);
  }

  std::array<char16_t, 256> characters_{};
  std::unordered_map<char16_t, char> bytes_;
};

void appendUtf8(std::string& bytes, char32_t point) {
  const auto put = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
  if (point < 0x80) {
    put(point);
  } else if (point < 0x800) {
    put(0xC0 | point >> 6);
    put(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    put(0xE0 | point >> 12);
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  }
}

void appendUtf16(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text.push_back(static_cast<char16_t>(point));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

/// Removes one character from the front of `bytes` and returns it. Where the bytes are malformed it
/// removes one byte and returns U+FFFD.
char32_t takeUtf8(std::string_view& bytes) {
  const auto byteAt = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byteAt(0);
  const std::size_t length = lead < 0x80           ? 1
                             : lead >> 5U == 0x06U ? 2
                             : lead >> 4U == 0x0EU ? 3
                             : lead >> 3U == 0x1EU ? 4
                                                   : 0;
  char32_t point = length == 1 ? lead : lead & (0x7FU >> length);
  bool wellFormed = length != 0 && length <= bytes.size();
  for (std::size_t i = 1; wellFormed && i < length; ++i) {
    wellFormed = byteAt(i) >> 6U == 0x02U;
    point = point << 6U | (byteAt(i) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kShortest{0, 0, 0x80, 0x800, 0x10000};
  wellFormed = wellFormed && point >= kShortest[length] && point <= 0x10FFFF && !isSurrogate(point);
  bytes.remove_prefix(wellFormed ? length : 1);
  return wellFormed ? point : kReplacement;
}

}  // namespace

std::string toCodePage(std::u16string_view text) {
  const CodePage& page = CodePage::instance();
  std::string bytes(text.size(), '\0');
  std::ranges::transform(text, bytes.begin(), [&page](char16_t unit) { return page.byte(unit); });
  return bytes;
}

std::u16string fromCodePage(std::string_view bytes) {
  const CodePage& page = CodePage::instance();
  std::u16string text(bytes.size(), u'\0');
  std::ranges::transform(bytes, text.begin(), [&page](char byte) { return page.character(byte); });
  return text;
}

std::string toUtf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (isSurrogatePair(text, i)) {
      appendUtf8(bytes, 0x10000 + ((unit - 0xD800U) << 10U) + (text[i + 1] - 0xDC00U));
      ++i;
    } else {
      appendUtf8(bytes, isSurrogate(unit) ? kReplacement : unit);
    }
  }
  return bytes;
}

std::u16string fromUtf8(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) appendUtf16(text, takeUtf8(bytes));
  return text;
}

}  // namespace runtime
