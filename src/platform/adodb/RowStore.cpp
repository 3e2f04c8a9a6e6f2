#include "platform/adodb/RowStore.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "platform/jetsql/Error.h"

namespace ADODB {
namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::size_t kMostMemory = 256 * 1024 * 1024;

/// What a packed value begins with. Behind a text or bytes follows the length, behind a row's
/// values nothing: the ids of its sources stand in front.
enum class Tag : std::uint8_t {
  Null,
  Whole8,
  Whole16,
  Whole32,
  Whole64,
  Floating,
  Latin,
  Wide,
  Bytes
};

template <class T>
T read(const std::uint8_t* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

template <class T>
bool holds(std::int64_t whole) {
  return whole >= std::numeric_limits<T>::min() && whole <= std::numeric_limits<T>::max();
}

/// Bytes behind the tag.
std::size_t sizeBehind(Tag tag, const std::uint8_t* at) {
  switch (tag) {
    case Tag::Null:
      return 0;
    case Tag::Whole8:
      return 1;
    case Tag::Whole16:
      return 2;
    case Tag::Whole32:
      return 4;
    case Tag::Whole64:
    case Tag::Floating:
      return 8;
    case Tag::Latin:
    case Tag::Bytes:
      return sizeof(std::uint32_t) + read<std::uint32_t>(at);
    case Tag::Wide:
      return sizeof(std::uint32_t) + 2 * std::size_t{read<std::uint32_t>(at)};
  }
  return 0;
}

}  // namespace

void RowStore::add(const jetsql::ResultRow& row) {
  rows_.push_back(store(row));
}

void RowStore::replace(std::size_t row, const jetsql::ResultRow& values) {
  rows_[row] = store(values);
}

const std::uint8_t* RowStore::store(const jetsql::ResultRow& row) {
  packed_.clear();
  const auto* sources = reinterpret_cast<const std::uint8_t*>(row.sources.data());
  packed_.insert(packed_.end(), sources, sources + row.sources.size_bytes());
  packed_.push_back(static_cast<std::uint8_t>(row.sources.size()));
  // The count of sources stands behind them; a row is known by the place behind both.
  const std::size_t front = packed_.size();
  for (const jetsql::RawValue& value : row.values) pack(value);
  if (blocks_.empty() || blockSize_ - blockUsed_ < packed_.size()) {
    blockSize_ = std::max(kBlock, packed_.size());
    total_ += blockSize_;
    if (total_ > kMostMemory) throw jetsql::error::tooComplex();
    blocks_.push_back(std::make_unique_for_overwrite<std::uint8_t[]>(blockSize_));
    blockUsed_ = 0;
  }
  std::uint8_t* at = blocks_.back().get() + blockUsed_;
  std::memcpy(at, packed_.data(), packed_.size());
  blockUsed_ += packed_.size();
  return at + front;
}

void RowStore::pack(const jetsql::RawValue& value) {
  const auto put = [this](Tag tag, const void* bytes, std::size_t size) {
    packed_.push_back(static_cast<std::uint8_t>(tag));
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    packed_.insert(packed_.end(), first, first + size);
  };
  const auto putWhole = [&](Tag tag, auto whole) { put(tag, &whole, sizeof whole); };
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    if (holds<std::int8_t>(*whole)) return putWhole(Tag::Whole8, static_cast<std::int8_t>(*whole));
    if (holds<std::int16_t>(*whole)) {
      return putWhole(Tag::Whole16, static_cast<std::int16_t>(*whole));
    }
    if (holds<std::int32_t>(*whole)) {
      return putWhole(Tag::Whole32, static_cast<std::int32_t>(*whole));
    }
    return putWhole(Tag::Whole64, *whole);
  }
  if (const auto* number = std::get_if<double>(&value)) {
    return put(Tag::Floating, number, sizeof *number);
  }
  if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    const auto length = static_cast<std::uint32_t>(text->size());
    const bool isLatin = std::ranges::all_of(*text, [](char16_t c) { return c < 0x100; });
    put(isLatin ? Tag::Latin : Tag::Wide, &length, sizeof length);
    if (isLatin) {
      for (const char16_t c : *text) packed_.push_back(static_cast<std::uint8_t>(c));
    } else {
      const auto* bytes = reinterpret_cast<const std::uint8_t*>(text->data());
      packed_.insert(packed_.end(), bytes, bytes + 2 * text->size());
    }
    return;
  }
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    const auto length = static_cast<std::uint32_t>(bytes->size());
    put(Tag::Bytes, &length, sizeof length);
    packed_.insert(packed_.end(), bytes->begin(), bytes->end());
    return;
  }
  put(Tag::Null, nullptr, 0);
}

runtime::Variant RowStore::value(std::size_t row, std::size_t column, jetsql::Type type) const {
  const std::uint8_t* at = rows_[row];
  for (std::size_t i = 0; i < column; ++i) at += 1 + sizeBehind(static_cast<Tag>(*at), at + 1);
  const auto tag = static_cast<Tag>(*at++);
  switch (tag) {
    case Tag::Null:
      return {};
    case Tag::Whole8:
      return jetsql::typedValue(type, std::int64_t{read<std::int8_t>(at)});
    case Tag::Whole16:
      return jetsql::typedValue(type, std::int64_t{read<std::int16_t>(at)});
    case Tag::Whole32:
      return jetsql::typedValue(type, std::int64_t{read<std::int32_t>(at)});
    case Tag::Whole64:
      return jetsql::typedValue(type, read<std::int64_t>(at));
    case Tag::Floating:
      return jetsql::typedValue(type, read<double>(at));
    default:
      break;
  }
  const std::size_t length = read<std::uint32_t>(at);
  at += sizeof(std::uint32_t);
  if (tag == Tag::Bytes) {
    return jetsql::typedValue(type, std::span<const std::uint8_t>(at, length));
  }
  std::u16string text(length, u'\0');
  if (tag == Tag::Latin) {
    std::copy(at, at + length, text.begin());
  } else {
    std::memcpy(text.data(), at, 2 * length);
  }
  return jetsql::typedValue(type, std::u16string_view(text));
}

std::uint32_t RowStore::source(std::size_t row, std::size_t place) const {
  const std::uint8_t* front = rows_[row] - 1;
  const std::size_t count = *front;
  return read<std::uint32_t>(front - (count - place) * sizeof(std::uint32_t));
}

}  // namespace ADODB
