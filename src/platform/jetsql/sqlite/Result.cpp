#include "platform/jetsql/sqlite/Result.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

#include "platform/jet/engine/Row.h"
#include "platform/jetsql/sqlite/SqlValue.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/writing/WrittenStatement.h"
#include "platform/runtime/Rounding.h"

namespace jetsql {
namespace {

constexpr std::size_t kBlock = 32 * 1024;
constexpr std::size_t kMostMemory = 256 * 1024 * 1024;

/// The first byte of a packed value; for a text or bytes, their length follows in four bytes. A
/// packed row is the ids of its source rows, then its values.
enum Tag : char { kNull, kInteger, kAmount, kFloating, kLatin, kWide, kBytes };

template <class T>
T read(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

/// Bytes of a packed value, its tag included.
std::size_t sizeOf(const char* at) {
  const Tag tag{*at};
  switch (tag) {
    case kNull:
      return 1;
    case kInteger:
      return 1 + sizeof(std::int32_t);
    case kAmount:
    case kFloating:
      return 1 + sizeof(double);
    case kLatin:
    case kWide:
    case kBytes:
      break;
  }
  const std::size_t unit = tag == kWide ? sizeof(char16_t) : 1;
  return 1 + sizeof(std::uint32_t) + unit * read<std::uint32_t>(at + 1);
}

/// A calculated number converted to the type; unchanged where the type isn't numeric. An amount is
/// packed as `kAmount`, so a plain number of type Currency is an overflow in SQLite's calculation.
template <class Number>
runtime::Variant numberValue(Type type, Number packed) {
  const double number = packed;
  switch (type) {
    case Type::Boolean:
      return number != 0;
    case Type::Byte:
      return runtime::rounded<std::uint8_t>(number, error::overflow);
    case Type::Integer:
      return runtime::rounded<std::int16_t>(number, error::overflow);
    case Type::Long:
      return runtime::rounded<std::int32_t>(number, error::overflow);
    case Type::Currency:
      throw error::overflow();
    case Type::Single:
      return static_cast<float>(number);
    case Type::Double:
      return number;
    case Type::Date:
      return runtime::Date{number};
    case Type::Decimal:
    case Type::Null:
    case Type::Text:
    case Type::Memo:
    case Type::Guid:
    case Type::Binary:
    case Type::Any:
      break;
  }
  return packed;
}

runtime::Variant textValue(Type type, std::u16string text) {
  if (type == Type::Decimal) return runtime::Decimal{std::move(text)};
  return text;
}

}  // namespace

Result::Result(std::vector<ResultColumn> columns, std::size_t sourceRows)
    : columns_(std::move(columns)), sourceRows_(sourceRows) {}

void Result::beginRow(std::span<const std::uint32_t> sourceIds) {
  packed_.assign(reinterpret_cast<const char*>(sourceIds.data()), sourceIds.size_bytes());
}

template <class T>
void Result::put(char tag, const T& value) {
  std::array<char, 1 + sizeof value> bytes{tag};
  std::memcpy(bytes.data() + 1, &value, sizeof value);
  packed_.append(bytes.data(), bytes.size());
}

void Result::putBytes(char tag, const void* bytes, std::size_t count, std::size_t unit) {
  put(tag, static_cast<std::uint32_t>(count));
  packed_.append(static_cast<const char*>(bytes), count * unit);
}

template <class T>
void Result::putHeld(const T& held) {
  if constexpr (std::is_same_v<T, runtime::Null>) {
    packed_.push_back(kNull);
  } else if constexpr (std::is_integral_v<T>) {
    put(kInteger, static_cast<std::int32_t>(held));
  } else if constexpr (std::is_floating_point_v<T>) {
    put(kFloating, static_cast<double>(held));
  } else if constexpr (std::is_same_v<T, runtime::Date>) {
    put(kFloating, held.days);
  } else if constexpr (std::is_same_v<T, runtime::Currency>) {
    put(kAmount, held.tenThousandths);
  } else if constexpr (std::is_same_v<T, runtime::Binary>) {
    putBytes(kBytes, held.data(), held.size(), 1);
  } else if constexpr (std::is_same_v<T, runtime::Guid>) {
    putBytes(kBytes, held.bytes.data(), held.bytes.size(), 1);
  } else if constexpr (std::is_same_v<T, runtime::Decimal>) {
    putHeld(held.digits);
  } else {
    putBytes(kWide, held.data(), held.size(), sizeof(char16_t));
  }
}

void Result::add(const runtime::Variant& value) {
  std::visit([this](const auto& held) { putHeld(held); }, value.get());
}

void Result::add(const jet::Row& row, const ValueSource& source) {
  if (isInteger(source.type)) {
    std::int32_t integer = 0;
    return row.integer(source.tableColumn, integer) ? put(kInteger, integer)
                                                    : putHeld(runtime::Null());
  }
  if (!isTextual(source.type)) return add(row.value(source.tableColumn));
  if (const auto latin = row.latinText(source.tableColumn)) {
    return putBytes(kLatin, latin->data(), latin->size(), 1);
  }
  row.text(source.tableColumn, text_) ? putHeld(text_) : putHeld(runtime::Null());
}

std::string_view Result::store(std::string_view row) {
  if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < row.size()) {
    const std::size_t size = std::max(kBlock, row.size());
    total_ += size;
    if (total_ > kMostMemory) throw error::tooComplex();
    blocks_.emplace_back().reserve(size);
  }
  std::string& block = blocks_.back();
  block += row;
  return std::string_view(block).substr(block.size() - row.size());
}

void Result::arrange(std::span<const std::uint32_t> order) {
  if (std::ranges::is_sorted(order)) return;
  // The rows are copied, so that they are read from adjacent memory.
  const std::vector<std::string> unordered = std::exchange(blocks_, {});
  const std::vector<std::string_view> rows = std::exchange(rows_, {});
  total_ = 0;
  rows_.reserve(order.size());
  for (const std::uint32_t row : order) rows_.push_back(store(rows[row]));
}

std::uint32_t Result::sourceId(std::size_t row, int sourceRow) const {
  return read<std::uint32_t>(rows_[row].data() +
                             static_cast<std::size_t>(sourceRow) * sizeof(std::uint32_t));
}

std::optional<jet::RowId> Result::rowOf(std::size_t row, std::size_t column) const {
  if (!columns_[column].table) return std::nullopt;
  const std::uint32_t packed = sourceId(row, columns_[column].sourceRow);
  if (packed == 0) return std::nullopt;
  return jet::RowId::unpack(packed);
}

void Result::replace(std::size_t row, int sourceRow, std::span<const runtime::Variant> values) {
  const char* at = rows_[row].data() + sourceRows_ * sizeof(std::uint32_t);
  packed_.assign(rows_[row].data(), at);
  auto next = values.begin();
  for (const ResultColumn& column : columns_) {
    const std::size_t size = sizeOf(at);
    if (column.table && column.sourceRow == sourceRow) {
      add(*next++);
    } else {
      packed_.append(at, size);
    }
    at += size;
  }
  rows_[row] = store(packed_);
}

runtime::Variant Result::value(std::size_t row, std::size_t column) const {
  const char* at = rows_[row].data() + sourceRows_ * sizeof(std::uint32_t);
  for (std::size_t i = 0; i < column; ++i) at += sizeOf(at);
  const Type type = columns_[column].type;
  const Tag tag{*at++};
  switch (tag) {
    case kNull:
      return {};
    case kInteger:
      if (type == Type::Long) return read<std::int32_t>(at);
      return numberValue(type, read<std::int32_t>(at));
    case kAmount:
      return runtime::Currency{read<std::int64_t>(at)};
    case kFloating:
      return numberValue(type, read<double>(at));
    case kLatin:
    case kWide:
    case kBytes:
      break;
  }
  const std::size_t length = read<std::uint32_t>(at);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(at + sizeof(std::uint32_t));
  if (tag == kBytes) return bytesValue({bytes, length}, type);
  if (tag == kLatin) return textValue(type, std::u16string(bytes, bytes + length));
  std::u16string text(length, u'\0');
  if (length != 0) std::memcpy(text.data(), bytes, length * sizeof(char16_t));
  return textValue(type, std::move(text));
}

}  // namespace jetsql
