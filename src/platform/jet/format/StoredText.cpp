#include "platform/jet/format/StoredText.h"

#include <algorithm>
#include <array>

#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

constexpr std::uint8_t kCompressedMark[] = {0xFF, 0xFE};
/// A longer memo is never stored compressed.
constexpr std::size_t kLongestCompressed = 1024;
constexpr std::size_t kShortestCompressed = 3;

bool isCompressed(ByteView stored) {
  return stored.size() >= 2 && stored[0] == kCompressedMark[0] && stored[1] == kCompressedMark[1];
}

/// Characters of the 256 bytes of the code page.
const std::array<char16_t, 256>& codePageCharacters() {
  static const std::array<char16_t, 256> characters = [] {
    std::array<char16_t, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i)
      made[i] = runtime::fromCodePage(std::string(1, static_cast<char>(i)))[0];
    return made;
  }();
  return characters;
}

void appendUtf8(char32_t character, std::string& text) {
  const auto add = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | character >> 6);
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | character >> 12);
    add(0x80 | (character >> 6 & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | character >> 18);
    add(0x80 | (character >> 12 & 0x3F));
    add(0x80 | (character >> 6 & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

void decodeCompressed(ByteView bytes, std::u16string& text) {
  bool wide = false;
  for (std::size_t at = 0; at < bytes.size();) {
    if (bytes[at] == 0) {
      wide = !wide;
      ++at;
    } else if (!wide) {
      text.push_back(bytes[at++]);
    } else if (at + 1 < bytes.size()) {
      text.push_back(static_cast<char16_t>(u16At(bytes, at)));
      at += 2;
    } else {
      return;
    }
  }
}

}  // namespace

bool isByteText(Version version, ByteView stored) {
  if (version == Version::Jet3) return true;
  return isCompressed(stored) && std::ranges::find(stored.subspan(2), 0) == stored.end();
}

ByteView byteText(Version version, ByteView stored) {
  return version == Version::Jet3 ? stored : stored.subspan(2);
}

void decodeText(Version version, ByteView stored, std::u16string& text) {
  text.clear();
  if (version == Version::Jet3) {
    const auto& characters = codePageCharacters();
    for (const std::uint8_t byte : stored) text.push_back(characters[byte]);
  } else if (isCompressed(stored)) {
    decodeCompressed(stored.subspan(2), text);
  } else {
    text.reserve(stored.size() / 2);
    for (std::size_t at = 0; at + 1 < stored.size(); at += 2)
      text.push_back(static_cast<char16_t>(u16At(stored, at)));
  }
}

void decodeTextUtf8(Version version, ByteView stored, std::string& text) {
  text.clear();
  if (isByteText(version, stored)) {
    const bool jet3 = version == Version::Jet3;
    for (const std::uint8_t byte : byteText(version, stored))
      appendUtf8(jet3 && byte >= 0x80 ? codePageCharacters()[byte] : byte, text);
    return;
  }
  std::u16string units;
  decodeText(version, stored, units);
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char32_t unit = units[i];
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    if (high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000) {
      appendUtf8(0x10000 + ((unit - 0xD800) << 10) + (units[i + 1] - 0xDC00U), text);
      ++i;
    } else {
      appendUtf8(unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit, text);
    }
  }
}

std::optional<Bytes> encodeText(Version version, std::u16string_view text, bool compress) {
  Bytes stored;
  if (version == Version::Jet3) {
    const std::string bytes = runtime::toCodePage(text);
    if (runtime::fromCodePage(bytes) != text) return std::nullopt;
    stored.assign(bytes.begin(), bytes.end());
    return stored;
  }
  const bool fits = std::ranges::all_of(text, [](char16_t c) { return c >= 1 && c <= 0xFF; });
  if (compress && fits && text.size() >= kShortestCompressed && text.size() <= kLongestCompressed) {
    appendBytes(stored, kCompressedMark);
    stored.insert(stored.end(), text.begin(), text.end());
    return stored;
  }
  stored.reserve(2 * text.size());
  for (const char16_t unit : text) appendU16(stored, unit);
  return stored;
}

}  // namespace jet
