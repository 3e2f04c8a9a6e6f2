#include "platform/jet/format/IndexKey.h"

#include <algorithm>
#include <variant>

#include "platform/jet/format/Header.h"
#include "platform/jet/format/StoredValue.h"

namespace jet {
namespace {

using runtime::Variant;

constexpr std::uint8_t kAscendingFlag = 0x7F;
constexpr std::uint8_t kDescendingFlag = 0x80;
constexpr std::uint8_t kLowest = 0x00;  ///< sorts before, and kHighest after, all other bytes
constexpr std::uint8_t kHighest = 0xFF;
constexpr std::uint8_t kSignBit = 0x80;
constexpr std::size_t kSegment = 8;
constexpr std::uint8_t kMoreSegments = 9;
/// Follows a descending text, Jet 4.
constexpr std::uint8_t kDescendingTextEnd = 0;

void invert(ByteSpan bytes) {
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(~byte);
}

/// Groups of eight bytes, each followed by 09 or, the last, by the number of its valid bytes. The
/// 09 stays as it is in a descending key.
void appendSegments(ByteView value, bool ascending, Bytes& key) {
  while (!value.empty()) {
    const std::size_t size = std::min(value.size(), kSegment);
    const std::size_t start = key.size();
    appendBytes(key, value.first(size));
    key.resize(start + kSegment);
    const bool last = size == value.size();
    key.push_back(last ? static_cast<std::uint8_t>(size) : kMoreSegments);
    if (!ascending) invert(ByteSpan(key).subspan(start, last ? kSegment + 1 : kSegment));
    value = value.subspan(size);
  }
}

/// Numbers. Their stored bytes are little endian; a key has them reversed, so that they sort as
/// bytes.
void appendNumber(ColumnType type, ByteView stored, bool ascending, Bytes& key) {
  key.insert(key.end(), stored.rbegin(), stored.rend());
  const ByteSpan number = ByteSpan(key).last(stored.size());
  const bool real =
      type == ColumnType::Single || type == ColumnType::Double || type == ColumnType::DateTime;
  if (real && (number[0] & kSignBit) != 0)
    invert(number);
  else if (type != ColumnType::Byte)
    number[0] ^= kSignBit;
  if (!ascending) invert(number);
}

/// A sign byte, then the magnitude: inverted for negative numbers in an ascending key, for positive
/// ones in a descending key. The sign byte is the same in both.
void appendNumeric(ByteView stored, bool ascending, Bytes& key) {
  const bool negative = stored[NumericValue::kSign] != 0;
  key.push_back(negative ? kLowest : kHighest);
  Bytes magnitude;
  for (std::size_t word = NumericValue::kMagnitude; word < stored.size();
       word += NumericValue::kWord)
    for (std::size_t i = NumericValue::kWord; i-- > 0;) magnitude.push_back(stored[word + i]);
  if (negative == ascending) invert(magnitude);
  appendBytes(key, magnitude);
}

/// The key of a text; a Binary value already is one. Empty where a character is outside the tables.
Bytes textPart(Version version, const Variant& value) {
  if (const auto* made = std::get_if<runtime::Binary>(&value.get()))
    return isKnownTextKey(*made) ? *made : Bytes();
  std::string text;
  if (!appendTextKey(textOrderOf(version), std::get<std::u16string>(value.get()), text)) return {};
  return {text.begin(), text.end()};
}

}  // namespace

std::uint8_t nullKey(bool ascending) {
  return ascending ? kLowest : kHighest;
}

KeySupport keySupport(Version version, const ColumnDefinition& column, bool ascending) {
  switch (column.type) {
    case ColumnType::Text:
    case ColumnType::Memo: {
      const bool codePage = version == Version::Jet4 || column.codePage == 0 ||
                            column.codePage == Header::kWindows1252;
      const bool general = column.sortLanguage == Header::kGeneral && column.sortVersion == 0;
      return codePage && general ? KeySupport::Ordered : KeySupport::None;
    }
    case ColumnType::Numeric:
    case ColumnType::Binary:
      return ascending ? KeySupport::Ordered : KeySupport::Unordered;
    case ColumnType::Guid:
    case ColumnType::Boolean:
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
    case ColumnType::Currency:
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::DateTime:
      return KeySupport::Ordered;
    case ColumnType::Ole:
    case ColumnType::Block:
      break;
  }
  return KeySupport::None;
}

void appendTextPart(Version version, bool ascending, ByteView textKey, Bytes& key) {
  key.push_back(ascending ? kAscendingFlag : kDescendingFlag);
  const std::size_t start = key.size();
  appendBytes(key, textKey);
  if (ascending) return;
  invert(ByteSpan(key).subspan(start));
  if (version == Version::Jet4) key.push_back(kDescendingTextEnd);
}

bool appendStoredKey(Version version, const ColumnDefinition& column, bool ascending,
                     ByteView stored, Bytes& key) {
  if (keySupport(version, column, ascending) == KeySupport::None) return false;
  key.push_back(ascending ? kAscendingFlag : kDescendingFlag);
  switch (column.type) {
    case ColumnType::Binary:
      appendSegments(stored, ascending, key);
      break;
    case ColumnType::Guid: {
      const runtime::Variant guid = decodeValue(version, column, stored, {});
      appendSegments(std::get<runtime::Guid>(guid.get()).bytes, ascending, key);
      break;
    }
    case ColumnType::Numeric:
      appendNumeric(stored, ascending, key);
      break;
    case ColumnType::Byte:
    case ColumnType::Integer:
    case ColumnType::Long:
    case ColumnType::Currency:
    case ColumnType::Single:
    case ColumnType::Double:
    case ColumnType::DateTime:
      appendNumber(column.type, stored, ascending, key);
      break;
    case ColumnType::Boolean:
    case ColumnType::Text:
    case ColumnType::Ole:
    case ColumnType::Memo:
    case ColumnType::Block:
      break;
  }
  return true;
}

bool appendKey(Version version, const ColumnDefinition& column, bool ascending,
               const Variant& value, Bytes& key) {
  if (keySupport(version, column, ascending) == KeySupport::None) return false;
  if (value.isNull()) {
    key.push_back(nullKey(ascending));
    return true;
  }
  if (isText(column.type)) {
    const Bytes text = textPart(version, value);
    if (text.empty()) return false;
    appendTextPart(version, ascending, text, key);
    return true;
  }
  if (column.type == ColumnType::Boolean) {
    key.push_back(ascending ? kAscendingFlag : kDescendingFlag);
    key.push_back(std::get<bool>(value.get()) == ascending ? kLowest : kHighest);
    return true;
  }
  const std::optional<Bytes> stored = encodeValue(version, column, value);
  return stored && appendStoredKey(version, column, ascending, *stored, key);
}

}  // namespace jet
