#include "platform/jet/format/StoredText.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

constexpr std::array<std::uint8_t, 2> kCompressedMark{0xFF, 0xFE};
/// Bytes of a UTF-16 unit, as Jet 4 stores text that isn't compressed.
constexpr std::size_t kUnitSize = sizeof(char16_t);
/// A longer memo is never stored compressed.
constexpr std::size_t kLongestCompressed = 1024;

bool isCompressed(ByteView stored) {
  return stored.size() >= kCompressedMark.size() && stored[0] == kCompressedMark[0] &&
         stored[1] == kCompressedMark[1];
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

void appendPlainText(Version version, ByteView stored, std::u16string& text) {
  if (version == Version::Jet3) {
    const auto& characters = codePageCharacters();
    for (const std::uint8_t byte : stored) text.push_back(characters[byte]);
    return;
  }
  text.resize(stored.size() / kUnitSize);
  const std::uint8_t* next = stored.data();
  for (char16_t& unit : text) {
    unit = static_cast<char16_t>(next[0] | next[1] << 8);
    next += kUnitSize;
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
    } else if (at + kUnitSize <= bytes.size()) {
      text.push_back(static_cast<char16_t>(u16At(bytes, at)));
      at += kUnitSize;
    } else {
      return;
    }
  }
}

}  // namespace

bool isByteText(Version version, ByteView stored) {
  if (version == Version::Jet3) return true;
  return isCompressed(stored) && std::memchr(stored.data(), 0, stored.size()) == nullptr;
}

ByteView byteText(Version version, ByteView stored) {
  return version == Version::Jet3 ? stored : stored.subspan(kCompressedMark.size());
}

void decodeText(Version version, ByteView stored, std::u16string& text) {
  text.clear();
  if (version == Version::Jet4 && isCompressed(stored))
    decodeCompressed(stored.subspan(kCompressedMark.size()), text);
  else
    appendPlainText(version, stored, text);
}

std::u16string decodePlainText(Version version, ByteView stored) {
  std::u16string text;
  appendPlainText(version, stored, text);
  return text;
}

Bytes encodePlainText(Version version, std::u16string_view text) {
  Bytes stored;
  if (version == Version::Jet3) {
    const std::string bytes = runtime::toCodePage(text);
    stored.assign(bytes.begin(), bytes.end());
    return stored;
  }
  stored.reserve(kUnitSize * text.size());
  for (const char16_t unit : text) appendU16(stored, unit);
  return stored;
}

std::optional<Bytes> encodeText(Version version, std::u16string_view text, bool compress) {
  const bool fits = std::ranges::all_of(text, [](char16_t c) { return c >= 1 && c <= 0xFF; });
  if (version == Version::Jet4 && compress && fits && text.size() >= kShortestCompressed &&
      text.size() <= kLongestCompressed) {
    Bytes stored(kCompressedMark.begin(), kCompressedMark.end());
    stored.insert(stored.end(), text.begin(), text.end());
    return stored;
  }
  Bytes stored = encodePlainText(version, text);
  if (version == Version::Jet3 && decodePlainText(version, stored) != text) return std::nullopt;
  return stored;
}

}  // namespace jet
