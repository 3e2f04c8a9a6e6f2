#pragma once

#include <optional>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// A Numeric: a sign, then the magnitude as four words, the most significant first.
struct NumericValue {
  static constexpr std::size_t kSign = 0;       ///< u8, kNegative or 0
  static constexpr std::size_t kMagnitude = 1;  ///< u32 each
  static constexpr std::size_t kWord = 4;       ///< bytes of a word
  static constexpr std::size_t kWords = 4;
  static constexpr std::size_t kSize = kMagnitude + kWords * kWord;
  static constexpr std::uint8_t kNegative = 0x80;
};

/// Size in bytes of a type's values in the fixed area. Absent for types whose size is the column's
/// length.
inline constexpr std::optional<std::size_t> typeSize(ColumnType type) {
  switch (type) {
    case ColumnType::Boolean:
      return 0;
    case ColumnType::Byte:
      return 1;
    case ColumnType::Integer:
      return 2;
    case ColumnType::Long:
    case ColumnType::Single:
      return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::DateTime:
      return 8;
    case ColumnType::Guid:
      return 16;
    case ColumnType::Numeric:
      return NumericValue::kSize;
    case ColumnType::Binary:
    case ColumnType::Text:
    case ColumnType::Ole:
    case ColumnType::Memo:
    case ColumnType::Block:
      break;
  }
  return std::nullopt;
}

/// Bytes that a column's values take in the fixed area.
inline std::size_t fixedSize(const ColumnDefinition& column) {
  return typeSize(column.type).value_or(column.length);
}
/// Raises damage where the bytes are too few for a value of the type.
inline void requireSize(ColumnType type, ByteView stored, const Location& location) {
  const std::size_t size = typeSize(type).value_or(0);
  if (stored.size() < size)
    raiseDamaged(location, u"a value is shorter than its column's type", {0, size, stored.size()});
}

/// A stored value of any type but Boolean (which the null mask holds) as the column's kind of
/// value: see `Row::value`. For memo and OLE the bytes are those of the long value itself. Raises
/// damage where the bytes are too few for the type.
runtime::Variant decodeValue(Version version, const ColumnDefinition& column, ByteView stored,
                             const Location& location);

/// The bytes of a value of exactly the column's kind, as `decodeValue` returns it; neither null nor
/// Boolean. Absent where the value has no such bytes: a Jet 3 text with a character that has no
/// byte, a Numeric with more digits than the column takes. The caller checks lengths.
std::optional<Bytes> encodeValue(Version version, const ColumnDefinition& column,
                                 const runtime::Variant& value);

}  // namespace jet
