#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/jet/format/Layout.h"

namespace jet {

/// The order by which a file compares, sorts and indexes text: the General order, in the form of
/// the file's generation. Letter case never counts, accents only between texts that are otherwise
/// equal, apostrophe and hyphen (Jet 4) last of all; blanks at the end never count, nor does
/// anything after the 255th character.
enum class TextOrder : std::uint8_t { General3, General4 };

inline constexpr TextOrder textOrderOf(Version version) {
  return version == Version::Jet3 ? TextOrder::General3 : TextOrder::General4;
}

/// Appends the text's key to `key`. Keys are compared as plain bytes, a prefix before the longer
/// key; two texts are equal exactly when their keys are. Every text has a key. Returns false where
/// the text has a character outside the known tables: it sorts after all known ones, by its code
/// unit, and the key must not be stored in an index.
bool appendTextKey(TextOrder order, std::u16string_view text, std::string& key);

/// The same for text whose bytes are its characters: U+0000 to U+00FF for General4 (text as the
/// file keeps it compressed), windows-1252 for General3.
bool appendByteTextKey(TextOrder order, std::span<const std::uint8_t> text, std::string& key);

/// False for a key of a text with a character outside the known tables.
bool isKnownTextKey(std::span<const std::uint8_t> key);

/// The key of one text.
std::string textKey(TextOrder order, std::u16string_view text);

/// Negative, zero or positive as `a` comes before `b`, equals it or comes after it, by their keys.
int compareText(TextOrder order, std::u16string_view a, std::u16string_view b);

/// True when the texts are equal in the General order. Names of objects and columns are compared
/// with it.
bool sameName(std::u16string_view a, std::u16string_view b);

}  // namespace jet
