#include "platform/jet/format/StoredValue.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>
#include <variant>

#include "platform/jet/format/StoredText.h"

namespace jet {
namespace {

using runtime::Variant;

/// Any number of this many decimal digits fits 96 bits; no column takes more.
constexpr std::size_t kMostNumericDigits = 28;

/// A GUID's first three parts are little endian in the file.
constexpr std::array<std::size_t, 16> kGuidOrder{3, 2, 1,  0,  5,  4,  7,  6,
                                                 8, 9, 10, 11, 12, 13, 14, 15};

runtime::Guid decodeGuid(ByteView stored) {
  runtime::Guid guid;
  for (std::size_t i = 0; i < guid.bytes.size(); ++i) guid.bytes[i] = stored[kGuidOrder[i]];
  return guid;
}

Bytes encodeGuid(const runtime::Guid& guid) {
  Bytes stored(guid.bytes.size());
  for (std::size_t i = 0; i < stored.size(); ++i) stored[kGuidOrder[i]] = guid.bytes[i];
  return stored;
}

/// The magnitude's words are stored most significant first, each little endian.
runtime::Decimal decodeNumeric(ByteView stored, std::size_t scale) {
  std::array<std::uint32_t, NumericValue::kWords> words{};
  for (std::size_t i = 0; i < words.size(); ++i)
    words[i] = u32At(stored, NumericValue::kMagnitude + NumericValue::kWord * i);
  std::u16string digits;
  while (std::ranges::any_of(words, [](std::uint32_t word) { return word != 0; })) {
    std::uint64_t rest = 0;
    for (std::uint32_t& word : words) {
      rest = rest << 32 | word;
      word = static_cast<std::uint32_t>(rest / 10);
      rest %= 10;
    }
    digits.push_back(static_cast<char16_t>(u'0' + rest));
  }
  while (digits.size() <= scale) digits.push_back(u'0');
  if (scale > 0) digits.insert(scale, 1, u'.');
  if ((stored[NumericValue::kSign] & NumericValue::kNegative) != 0) digits.push_back(u'-');
  std::ranges::reverse(digits);
  return {digits};
}

std::optional<Bytes> encodeNumeric(std::u16string_view text, const ColumnDefinition& column) {
  Bytes stored(NumericValue::kSize);
  if (text.starts_with(u'-')) {
    stored[NumericValue::kSign] = NumericValue::kNegative;
    text.remove_prefix(1);
  }
  const std::size_t point = std::min(text.find(u'.'), text.size());
  std::u16string digits(text.substr(0, point));
  const std::u16string_view fraction =
      point < text.size() ? text.substr(point + 1) : text.substr(point);
  digits.append(fraction);
  if (fraction.size() > column.scale) return std::nullopt;
  digits.append(column.scale - fraction.size(), u'0');
  digits.erase(0, std::min(digits.find_first_not_of(u'0'), digits.size()));
  const std::size_t most = std::min<std::size_t>(column.precision, kMostNumericDigits);
  if (digits.size() > most) return std::nullopt;
  std::array<std::uint32_t, NumericValue::kWords> words{};
  for (const char16_t digit : digits) {
    std::uint64_t carry = digit - u'0';
    for (std::size_t i = words.size(); i-- > 0;) {
      carry += static_cast<std::uint64_t>(words[i]) * 10;
      words[i] = static_cast<std::uint32_t>(carry);
      carry >>= 32;
    }
  }
  for (std::size_t i = 0; i < words.size(); ++i)
    putU32(stored, NumericValue::kMagnitude + NumericValue::kWord * i, words[i]);
  return stored;
}

template <class Integer>
Bytes littleEndian(Integer value) {
  Bytes bytes(sizeof value);
  for (std::size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<std::uint8_t>(value >> 8 * i);
  return bytes;
}

}  // namespace

Variant decodeValue(Version version, const ColumnDefinition& column, ByteView stored,
                    const Location& location) {
  requireSize(column.type, stored, location);
  switch (column.type) {
    case ColumnType::Byte:
      return stored[0];
    case ColumnType::Integer:
      return std::bit_cast<std::int16_t>(u16At(stored, 0));
    case ColumnType::Long:
      return std::bit_cast<std::int32_t>(u32At(stored, 0));
    case ColumnType::Currency:
      return runtime::Currency{std::bit_cast<std::int64_t>(u64At(stored, 0))};
    case ColumnType::Single:
      return std::bit_cast<float>(u32At(stored, 0));
    case ColumnType::Double:
      return std::bit_cast<double>(u64At(stored, 0));
    case ColumnType::DateTime:
      return runtime::Date{std::bit_cast<double>(u64At(stored, 0))};
    case ColumnType::Guid:
      return decodeGuid(stored);
    case ColumnType::Numeric:
      return decodeNumeric(stored, column.scale);
    case ColumnType::Text:
    case ColumnType::Memo: {
      std::u16string text;
      decodeText(version, stored, text);
      return text;
    }
    case ColumnType::Boolean:
    case ColumnType::Binary:
    case ColumnType::Ole:
    case ColumnType::Block:
      break;
  }
  return runtime::Binary(stored.begin(), stored.end());
}

std::optional<Bytes> encodeValue(Version version, const ColumnDefinition& column,
                                 const Variant& value) {
  const auto& any = value.get();
  switch (column.type) {
    case ColumnType::Byte:
      return Bytes{std::get<std::uint8_t>(any)};
    case ColumnType::Integer:
      return littleEndian(std::bit_cast<std::uint16_t>(std::get<std::int16_t>(any)));
    case ColumnType::Long:
      return littleEndian(std::bit_cast<std::uint32_t>(std::get<std::int32_t>(any)));
    case ColumnType::Currency:
      return littleEndian(
          std::bit_cast<std::uint64_t>(std::get<runtime::Currency>(any).tenThousandths));
    case ColumnType::Single:
      return littleEndian(std::bit_cast<std::uint32_t>(std::get<float>(any)));
    case ColumnType::Double:
      return littleEndian(std::bit_cast<std::uint64_t>(std::get<double>(any)));
    case ColumnType::DateTime:
      return littleEndian(std::bit_cast<std::uint64_t>(std::get<runtime::Date>(any).days));
    case ColumnType::Guid:
      return encodeGuid(std::get<runtime::Guid>(any));
    case ColumnType::Numeric:
      return encodeNumeric(std::get<runtime::Decimal>(any).digits, column);
    case ColumnType::Text:
    case ColumnType::Memo:
      return encodeText(version, std::get<std::u16string>(any), column.compressed);
    case ColumnType::Boolean:
    case ColumnType::Binary:
    case ColumnType::Ole:
    case ColumnType::Block:
      break;
  }
  return std::get<runtime::Binary>(any);
}

}  // namespace jet
