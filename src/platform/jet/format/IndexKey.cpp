#include "platform/jet/format/IndexKey.h"

#include <algorithm>
#include <variant>

#include "platform/jet/format/ColumnValue.h"
#include "platform/jet/format/Header.h"

namespace jet {
namespace {

using runtime::Variant;

constexpr std::uint8_t kAscendingFlag = 0x7F;
constexpr std::uint8_t kDescendingFlag = 0x80;
constexpr std::size_t kSegment = 8;
constexpr std::uint8_t kMoreSegments = 9;

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

/// Numbers, whose stored bytes are little endian: turned round, so that they sort as bytes.
Bytes numberKey(ColumnType type, Bytes stored) {
  std::ranges::reverse(stored);
  const bool real =
      type == ColumnType::Single || type == ColumnType::Double || type == ColumnType::DateTime;
  if (real && (stored[0] & 0x80) != 0)
    invert(stored);
  else if (type != ColumnType::Byte)
    stored[0] ^= 0x80;
  return stored;
}

/// A sign byte, then the magnitude. In a descending key the sign byte stays and the magnitude of
/// the other sign is the inverted one.
void appendNumeric(ByteView stored, bool ascending, Bytes& key) {
  const bool negative = stored[0] != 0;
  key.push_back(negative ? 0x00 : 0xFF);
  Bytes magnitude;
  for (std::size_t word = 1; word < stored.size(); word += 4)
    for (std::size_t i = 4; i-- > 0;) magnitude.push_back(stored[word + i]);
  if (negative == ascending) invert(magnitude);
  appendBytes(key, magnitude);
}

void appendText(Version version, bool ascending, ByteView text, Bytes& key) {
  const std::size_t start = key.size();
  appendBytes(key, text);
  if (ascending) return;
  invert(ByteSpan(key).subspan(start));
  if (version == Version::Jet4) key.push_back(0);
}

/// The text's key, or the one that was made before; empty where a character is outside the tables.
Bytes textPart(Version version, const Variant& value) {
  const TextOrder order = version == Version::Jet3 ? TextOrder::General3 : TextOrder::General4;
  if (const auto* made = std::get_if<runtime::Binary>(&value.get()))
    return isKnownTextKey(*made) ? *made : Bytes();
  std::string text;
  if (!appendTextKey(order, std::get<std::u16string>(value.get()), text)) return {};
  return {text.begin(), text.end()};
}

}  // namespace

std::uint8_t nullKey(bool ascending) {
  return ascending ? 0x00 : 0xFF;
}

KeySupport keySupport(Version version, const ColumnDefinition& column, bool ascending) {
  switch (column.type) {
    case ColumnType::Text:
    case ColumnType::Memo: {
      const bool codePage =
          version == Version::Jet4 || column.codePage == 0 || column.codePage == 1252;
      const bool general = column.sortLanguage == Header::kGeneral && column.sortVersion == 0;
      return codePage && general ? KeySupport::Ordered : KeySupport::None;
    }
    case ColumnType::Numeric:
    case ColumnType::Binary:
      return ascending ? KeySupport::Ordered : KeySupport::Unordered;
    case ColumnType::Guid:
      return KeySupport::Ordered;
    default:
      return typeSize(column.type) ? KeySupport::Ordered : KeySupport::None;
  }
}

bool appendKey(Version version, const ColumnDefinition& column, bool ascending,
               const Variant& value, Bytes& key) {
  if (keySupport(version, column, ascending) == KeySupport::None) return false;
  if (value.isNull()) {
    key.push_back(nullKey(ascending));
    return true;
  }
  const std::uint8_t flag = ascending ? kAscendingFlag : kDescendingFlag;
  if (isText(column.type)) {
    const Bytes text = textPart(version, value);
    if (text.empty()) return false;
    key.push_back(flag);
    appendText(version, ascending, text, key);
    return true;
  }
  if (column.type == ColumnType::Boolean) {
    key.push_back(flag);
    key.push_back(std::get<bool>(value.get()) == ascending ? 0x00 : 0xFF);
    return true;
  }
  if (column.type == ColumnType::Guid) {
    key.push_back(flag);
    appendSegments(std::get<runtime::Guid>(value.get()).bytes, ascending, key);
    return true;
  }
  const std::optional<Bytes> stored = encodeValue(version, column, value);
  if (!stored) return false;
  key.push_back(flag);
  if (column.type == ColumnType::Binary) {
    appendSegments(*stored, ascending, key);
  } else if (column.type == ColumnType::Numeric) {
    appendNumeric(*stored, ascending, key);
  } else {
    Bytes number = numberKey(column.type, *stored);
    if (!ascending) invert(number);
    appendBytes(key, number);
  }
  return true;
}

}  // namespace jet
