#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Layout.h"

namespace jet {

/// Text as the file stores it. Jet 3: windows-1252, one byte per character. Jet 4: UTF-16, or
/// compressed: FF FE, then one byte per character (U+0001 to U+00FF), where a zero byte switches to
/// UTF-16 and, between two characters, back.

/// A shorter text is never stored compressed.
inline constexpr std::size_t kShortestCompressed = 3;

/// True for text whose bytes are its characters: any Jet 3 text, and compressed Jet 4 text without
/// a switch (its bytes after the mark).
bool isByteText(Version version, ByteView stored);
/// The bytes of such text: its characters in Latin-1 (Jet 4, compressed) or windows-1252 (Jet 3).
ByteView byteText(Version version, ByteView stored);

/// Text that is never compressed: names, values of properties, the password. A character that has
/// no byte in a Jet 3 file becomes "?".
std::u16string decodePlainText(Version version, ByteView stored);
Bytes encodePlainText(Version version, std::u16string_view text);

/// Decodes stored text and replaces `text` with it.
void decodeText(Version version, ByteView stored, std::u16string& text);

/// The stored form of a text. `compress` is the column's setting; a text that is too short or too
/// long, or has a character outside U+0001 to U+00FF, is never compressed. Absent for a Jet 3 file
/// where a character has no byte.
std::optional<Bytes> encodeText(Version version, std::u16string_view text, bool compress);

}  // namespace jet
