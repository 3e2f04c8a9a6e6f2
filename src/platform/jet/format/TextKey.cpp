#include "platform/jet/format/TextKey.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "platform/jet/format/TextWeights.h"
#include "platform/runtime/CodePage.h"

namespace jet {
namespace {

constexpr std::size_t kLongestKeyedText = 255;
/// Precedes a character outside the tables; greater than all inline bytes of known ones.
constexpr std::uint8_t kUnknown = 0xFE;
constexpr std::uint8_t kLowestInline = 2;  ///< lower bytes end the inline bytes
constexpr std::uint8_t kEnd = 0;

void add(std::string& key, std::uint8_t byte) {
  key.push_back(static_cast<char>(byte));
}

template <class Text>
Text keyedPart(Text text) {
  if (text.size() > kLongestKeyedText) text = text.substr(0, kLongestKeyedText);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

void addUnknown(std::string& key, char16_t unit) {
  add(key, kUnknown);
  add(key, static_cast<std::uint8_t>(unit >> 8));
  add(key, static_cast<std::uint8_t>(unit));
}

/// Jet 4: inline bytes, 01, then the accents by position, then the ignorable characters by
/// position.
class General4Key {
 public:
  /// The key already holds the inline bytes of `plain` characters, one for each.
  explicit General4Key(std::string& key, std::size_t plain = 0) : key_(key), position_(plain) {}

  void addCharacter(const TextWeight& weight) {
    for (std::size_t i = 0; i < weight.inlineCount; ++i) add(key_, weight.inlineBytes[i]);
    if (weight.mark != 0) {
      marks_.resize(position_, kNoMark);
      marks_.push_back(weight.mark);
    }
    if (weight.ignorable != 0) {
      const std::size_t where = kPosition | (kFirstPosition + kPositionStep * position_);
      for (const std::size_t byte : {where >> 8, where & 0xFF, kAfterPosition})
        ignorables_.push_back(static_cast<std::uint8_t>(byte));
      ignorables_.push_back(weight.ignorable);
    }
    if (weight.inlineCount > 0) ++position_;
  }
  void addUnknownCharacter(char16_t unit) {
    addUnknown(key_, unit);
    ++position_;
  }
  void finish() {
    add(key_, kSection);
    while (!marks_.empty() && marks_.back() <= kNoMark) marks_.pop_back();
    key_.append(marks_.begin(), marks_.end());
    if (!ignorables_.empty()) {
      key_.append(kSectionsBeforeIgnorables, static_cast<char>(kSection));
      key_.append(ignorables_.begin(), ignorables_.end());
    }
    add(key_, kEnd);
  }

 private:
  static constexpr std::uint8_t kSection = 1;
  static constexpr std::size_t kSectionsBeforeIgnorables = 3;
  static constexpr std::uint8_t kNoMark = 2;
  // Of an ignorable character: the characters before it, counted in steps.
  static constexpr std::size_t kPosition = 0x8000;
  static constexpr std::size_t kFirstPosition = 7;
  static constexpr std::size_t kPositionStep = 4;
  static constexpr std::size_t kAfterPosition = 0x06;

  std::string& key_;
  std::size_t position_;  ///< characters with inline bytes so far
  std::vector<std::uint8_t> marks_;
  std::vector<std::uint8_t> ignorables_;
};

/// Jet 3: inline bytes, then 00, or a string of nibbles that counts the letters between accents.
class General3Key {
 public:
  explicit General3Key(std::string& key, std::size_t /*plain*/ = 0) : key_(key) {}

  void addCharacter(const TextWeight& weight) {
    for (std::size_t i = 0; i < weight.inlineCount; ++i) add(key_, weight.inlineBytes[i]);
    if (weight.mark != 0) {
      if (nibbles_.empty()) nibbles_.push_back(0);
      nibbles_.insert(nibbles_.end(), lettersSinceMark_, kLetter);
      nibbles_.push_back(weight.mark);
      lettersSinceMark_ = 0;
    }
    lettersSinceMark_ += weight.significant;
  }
  void addUnknownCharacter(char16_t unit) { addUnknown(key_, unit); }
  void finish() {
    if (nibbles_.empty()) return add(key_, kEnd);
    nibbles_.push_back(0);
    if (nibbles_.size() % 2 != 0) nibbles_.push_back(0);
    for (std::size_t i = 0; i < nibbles_.size(); i += 2)
      add(key_, static_cast<std::uint8_t>(nibbles_[i] << 4 | nibbles_[i + 1]));
  }

 private:
  static constexpr std::uint8_t kLetter = 2;

  std::string& key_;
  std::size_t lettersSinceMark_ = 0;
  std::vector<std::uint8_t> nibbles_;
};

const TextWeight* general4Weight(char16_t unit) {
  std::size_t index = unit;
  if (index < kGeneral4Latin.size()) return &kGeneral4Latin[index];
  index -= kGeneral4Latin.size();
  if (index < kGeneral4Extended.size()) return &kGeneral4Extended[index];
  const auto found = std::ranges::lower_bound(kGeneral4OtherCharacters, unit);
  if (found == kGeneral4OtherCharacters.end() || *found != unit) return nullptr;
  return &kGeneral4Other[static_cast<std::size_t>(found - kGeneral4OtherCharacters.begin())];
}

/// The byte of a character in windows-1252.
std::optional<std::uint8_t> codePageByte(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<std::uint8_t>(unit);
  static const std::array<char16_t, 0x20> middle = [] {
    std::array<char16_t, 0x20> characters{};
    for (std::size_t i = 0; i < characters.size(); ++i)
      characters[i] = runtime::fromCodePage(std::string(1, static_cast<char>(0x80 + i)))[0];
    return characters;
  }();
  const auto found = std::ranges::find(middle, unit);
  if (found == middle.end()) return std::nullopt;
  return static_cast<std::uint8_t>(0x80 + (found - middle.begin()));
}

const TextWeight* general3Weight(char16_t unit) {
  const std::optional<std::uint8_t> byte = codePageByte(unit);
  return byte ? &kGeneral3[*byte] : nullptr;
}

template <class Key>
bool appendText(std::u16string_view text, const TextWeight* (*weightOf)(char16_t),
                std::string& bytes) {
  Key key(bytes);
  bool known = true;
  for (const char16_t unit : text) {
    if (const TextWeight* weight = weightOf(unit)) {
      key.addCharacter(*weight);
    } else {
      key.addUnknownCharacter(unit);
      known = false;
    }
  }
  key.finish();
  return known;
}

template <class Key>
void appendBytesOf(std::string_view text, const std::array<TextWeight, 256>& weights,
                   std::string& bytes) {
  // Most texts hold nothing but plain characters, and most others begin with some.
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  std::size_t plain = 0;
  for (; plain < text.size(); ++plain) {
    const TextWeight& weight = weights[static_cast<std::uint8_t>(text[plain])];
    if (!weight.plain) break;
    bytes[start + plain] = static_cast<char>(weight.inlineBytes[0]);
  }
  bytes.resize(start + plain);
  Key key(bytes, plain);
  for (const char byte : text.substr(plain))
    key.addCharacter(weights[static_cast<std::uint8_t>(byte)]);
  key.finish();
}

}  // namespace

bool appendTextKey(TextOrder order, std::u16string_view text, std::string& key) {
  const std::u16string_view part = keyedPart(text);
  return order == TextOrder::General3 ? appendText<General3Key>(part, general3Weight, key)
                                      : appendText<General4Key>(part, general4Weight, key);
}

bool appendByteTextKey(TextOrder order, std::span<const std::uint8_t> text, std::string& key) {
  const std::string_view part =
      keyedPart(std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
  if (order == TextOrder::General3)
    appendBytesOf<General3Key>(part, kGeneral3, key);
  else
    appendBytesOf<General4Key>(part, kGeneral4Latin, key);
  return true;
}

bool isKnownTextKey(std::span<const std::uint8_t> key) {
  for (const std::uint8_t byte : key) {
    if (byte < kLowestInline) return true;
    if (byte == kUnknown) return false;
  }
  return true;
}

std::string textKey(TextOrder order, std::u16string_view text) {
  std::string key;
  appendTextKey(order, text, key);
  return key;
}

int compareText(TextOrder order, std::u16string_view a, std::u16string_view b) {
  a = keyedPart(a);
  b = keyedPart(b);
  // The one byte of a plain Latin character; 0 for any other.
  const auto plainByte = [order](char16_t unit) {
    if (unit >= 0x100 || (unit >= 0x80 && unit < 0xA0)) return 0;
    const TextWeight& weight =
        order == TextOrder::General3 ? kGeneral3[unit] : kGeneral4Latin[unit];
    return weight.plain ? int{weight.inlineBytes[0]} : 0;
  };
  // Inline bytes come first in a key, and plain characters have nothing else.
  const std::size_t size = std::min(a.size(), b.size());
  for (std::size_t at = 0; at < size; ++at) {
    if (a[at] == b[at]) continue;
    const int first = plainByte(a[at]);
    const int second = plainByte(b[at]);
    if (first == 0 || second == 0) return textKey(order, a).compare(textKey(order, b));
    if (first != second) return first - second;
  }
  if (a.size() == b.size()) return 0;
  const bool isShorter = a.size() < b.size();
  if (plainByte(isShorter ? b[size] : a[size]) != 0) return isShorter ? -1 : 1;
  return textKey(order, a).compare(textKey(order, b));
}

bool sameName(std::u16string_view a, std::u16string_view b) {
  return compareText(TextOrder::General4, a, b) == 0;
}

}  // namespace jet
