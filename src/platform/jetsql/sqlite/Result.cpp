#include "platform/jetsql/sqlite/Result.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <variant>

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::size_t kMostMemory = 256 * 1024 * 1024;

/// What a packed value begins with. A text or bytes go on with their length, four bytes; the ids of
/// a row's sources come before its values.
enum Tag : std::uint8_t { kNull, kByte, kWhole, kAmount, kFloating, kLatin, kWide, kBytes };

template <class T>
T read(const std::uint8_t* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

/// Bytes after the tag.
std::size_t sizeAfter(Tag tag, const std::uint8_t* at) {
  switch (tag) {
    case kNull:
      return 0;
    case kByte:
      return 1;
    case kWhole:
      return sizeof(std::int32_t);
    case kAmount:
    case kFloating:
      return sizeof(double);
    case kWide:
      return sizeof(std::uint32_t) + 2 * std::size_t{read<std::uint32_t>(at)};
    case kLatin:
    case kBytes:
      break;
  }
  return sizeof(std::uint32_t) + read<std::uint32_t>(at);
}

runtime::Variant wholeValue(Type type, std::int32_t whole) {
  switch (type) {
    case Type::Boolean:
      return whole != 0;
    case Type::Byte:
      return static_cast<std::uint8_t>(whole);
    case Type::Integer:
      return static_cast<std::int16_t>(whole);
    case Type::Null:
    case Type::Long:
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date:
    case Type::Decimal:
    case Type::Text:
    case Type::Memo:
    case Type::Guid:
    case Type::Binary:
    case Type::Any:
      break;
  }
  return whole;
}

runtime::Variant floatingValue(Type type, double number) {
  if (type == Type::Single) return static_cast<float>(number);
  if (type == Type::Date) return runtime::Date{number};
  return number;
}

runtime::Variant textValue(Type type, std::u16string text) {
  if (type == Type::Decimal) return runtime::Decimal{std::move(text)};
  return text;
}

runtime::Variant bytesValue(Type type, const std::uint8_t* bytes, std::size_t size) {
  if (type != Type::Guid) return runtime::Binary(bytes, bytes + size);
  runtime::Guid guid;
  std::copy_n(bytes, std::min(size, guid.bytes.size()), guid.bytes.begin());
  return guid;
}

}  // namespace

Result::Result(std::vector<ResultColumn> columns, std::size_t sourceRows)
    : columns_(std::move(columns)), sourceRows_(sourceRows) {}

void Result::beginRow(std::span<const std::uint32_t> sources) {
  packed_.clear();
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(sources.data());
  packed_.insert(packed_.end(), bytes, bytes + sources.size_bytes());
}

template <class T>
void Result::put(std::uint8_t tag, const T& value) {
  packed_.push_back(tag);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(&value);
  packed_.insert(packed_.end(), bytes, bytes + sizeof value);
}

void Result::putBytes(std::uint8_t tag, const void* bytes, std::size_t count, std::size_t unit) {
  put(tag, static_cast<std::uint32_t>(count));
  const auto* first = static_cast<const std::uint8_t*>(bytes);
  packed_.insert(packed_.end(), first, first + count * unit);
}

void Result::add(const runtime::Variant& value) {
  const auto& held = value.get();
  if (value.isNull()) {
    packed_.push_back(kNull);
  } else if (const auto* truth = std::get_if<bool>(&held)) {
    put(kByte, static_cast<std::int8_t>(*truth ? -1 : 0));
  } else if (const auto* byte = std::get_if<std::uint8_t>(&held)) {
    put(kWhole, std::int32_t{*byte});
  } else if (const auto* integer = std::get_if<std::int16_t>(&held)) {
    put(kWhole, std::int32_t{*integer});
  } else if (const auto* whole = std::get_if<std::int32_t>(&held)) {
    put(kWhole, *whole);
  } else if (const auto* amount = std::get_if<runtime::Currency>(&held)) {
    put(kAmount, amount->tenThousandths);
  } else if (const auto* bytes = std::get_if<runtime::Binary>(&held)) {
    putBytes(kBytes, bytes->data(), bytes->size(), 1);
  } else if (const auto* guid = std::get_if<runtime::Guid>(&held)) {
    putBytes(kBytes, guid->bytes.data(), guid->bytes.size(), 1);
  } else if (const auto* text = std::get_if<std::u16string>(&held)) {
    putBytes(kWide, text->data(), text->size(), sizeof(char16_t));
  } else if (const auto* decimal = std::get_if<runtime::Decimal>(&held)) {
    putBytes(kWide, decimal->digits.data(), decimal->digits.size(), sizeof(char16_t));
  } else {
    put(kFloating, *value.number());
  }
}

void Result::add(const jet::Row& row, const ValueSource& source) {
  switch (source.type) {
    case Type::Byte:
    case Type::Integer:
    case Type::Long: {
      std::int32_t whole = 0;
      if (!row.integer(source.tableColumn, whole)) return packed_.push_back(kNull);
      return put(kWhole, whole);
    }
    case Type::Text:
    case Type::Memo:
      if (const auto latin = row.latinText(source.tableColumn)) {
        return putBytes(kLatin, latin->data(), latin->size(), 1);
      }
      if (!row.text(source.tableColumn, text_)) return packed_.push_back(kNull);
      return putBytes(kWide, text_.data(), text_.size(), sizeof(char16_t));
    case Type::Null:
    case Type::Boolean:
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date:
    case Type::Decimal:
    case Type::Guid:
    case Type::Binary:
    case Type::Any:
      break;
  }
  add(row.value(source.tableColumn));
}

const std::uint8_t* Result::store() {
  if (blocks_.empty() || blockSize_ - blockUsed_ < packed_.size()) {
    blockSize_ = std::max(kBlock, packed_.size());
    total_ += blockSize_;
    if (total_ > kMostMemory) throw error::tooComplex();
    blocks_.push_back(std::make_unique_for_overwrite<std::uint8_t[]>(blockSize_));
    blockUsed_ = 0;
  }
  std::uint8_t* at = blocks_.back().get() + blockUsed_;
  std::copy(packed_.begin(), packed_.end(), at);
  blockUsed_ += packed_.size();
  return at;
}

void Result::arrange(std::span<const std::uint32_t> order) {
  std::vector<const std::uint8_t*> arranged;
  arranged.reserve(rows_.size());
  for (const std::uint32_t row : order) arranged.push_back(rows_[row]);
  rows_ = std::move(arranged);
}

std::uint32_t Result::source(std::size_t row, int sourceRow) const {
  return read<std::uint32_t>(rows_[row] +
                             static_cast<std::size_t>(sourceRow) * sizeof(std::uint32_t));
}

std::optional<jet::RowId> Result::rowOf(std::size_t row, std::size_t column) const {
  if (!columns_[column].table) return std::nullopt;
  const std::uint32_t packed = source(row, columns_[column].sourceRow);
  if (packed == 0) return std::nullopt;
  return jet::RowId::unpack(packed);
}

void Result::replace(std::size_t row, int sourceRow, std::span<const runtime::Variant> values) {
  std::vector<std::uint32_t> sources;
  for (std::size_t i = 0; i < sourceRows_; ++i) {
    sources.push_back(source(row, static_cast<int>(i)));
  }
  beginRow(sources);
  auto next = values.begin();
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const bool isReplaced = columns_[i].table && columns_[i].sourceRow == sourceRow;
    add(isReplaced ? *next++ : value(row, i));
  }
  rows_[row] = store();
}

runtime::Variant Result::value(std::size_t row, std::size_t column) const {
  const std::uint8_t* at = rows_[row] + sourceRows_ * sizeof(std::uint32_t);
  for (std::size_t i = 0; i < column; ++i) at += 1 + sizeAfter(Tag{*at}, at + 1);
  const Type type = columns_[column].type;
  const Tag tag{*at++};
  switch (tag) {
    case kNull:
      return {};
    case kByte:
      return wholeValue(type, read<std::int8_t>(at));
    case kWhole:
      return wholeValue(type, read<std::int32_t>(at));
    case kAmount:
      return runtime::Currency{read<std::int64_t>(at)};
    case kFloating:
      return floatingValue(type, read<double>(at));
    case kLatin:
    case kWide:
    case kBytes:
      break;
  }
  const std::size_t length = read<std::uint32_t>(at);
  at += sizeof(std::uint32_t);
  if (tag == kBytes) return bytesValue(type, at, length);
  if (tag == kLatin) return textValue(type, std::u16string(at, at + length));
  std::u16string text(length, u'\0');
  if (length != 0) std::memcpy(text.data(), at, length * sizeof(char16_t));
  return textValue(type, std::move(text));
}

}  // namespace jetsql
