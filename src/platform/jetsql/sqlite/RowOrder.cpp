#include "platform/jetsql/sqlite/RowOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <span>
#include <variant>

#include "platform/jetsql/sqlite/SqlValue.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// The first byte of each term of a key. None is 0, the byte that ends a term of variable length.
constexpr char kNull = 1;
constexpr char kNumber = 2;
constexpr char kText = 3;
constexpr char kBytes = 4;

constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;

/// Converts between a number and the one whose bytes in memory sort as the number does.
std::uint64_t bigEndian(std::uint64_t number) {
  return std::endian::native == std::endian::little ? __builtin_bswap64(number) : number;
}

void appendNumber(std::uint64_t bits, std::string& key) {
  const std::uint64_t sorting = bigEndian(bits);
  std::array<char, 1 + sizeof sorting> bytes{kNumber};
  std::memcpy(bytes.data() + 1, &sorting, sizeof sorting);
  key.append(bytes.data(), bytes.size());
}

}  // namespace

/// Appends a number as bytes that sort as the numbers do.
void RowOrder::addNumber(double number) {
  // Zero and negative zero are equal.
  const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  appendNumber((bits & kSign) != 0 ? ~bits : bits | kSign, keys_);
}

void RowOrder::add(const runtime::Variant& value, bool descending) {
  const std::size_t begin = keys_.size();
  const auto& held = value.get();
  if (value.isNull()) {
    keys_ += kNull;
  } else if (const auto* text = std::get_if<std::u16string>(&held)) {
    keys_ += kText;
    jet::appendTextKey(order_, *text, keys_);
  } else if (const auto* guid = std::get_if<runtime::Guid>(&held)) {
    keys_ += kBytes;
    keys_.append(guid->bytes.begin(), guid->bytes.end());
  } else if (const auto* bytes = std::get_if<runtime::Binary>(&held)) {
    keys_ += kBytes;
    keys_.append(bytes->begin(), bytes->end());
  } else if (const auto* amount = std::get_if<runtime::Currency>(&held)) {
    appendNumber(static_cast<std::uint64_t>(amount->tenThousandths) ^ kSign, keys_);
  } else if (const auto* decimal = std::get_if<runtime::Decimal>(&held)) {
    const std::u16string exact = decimalText(*decimal);
    keys_ += kBytes;
    keys_.append(exact.begin(), exact.begin() + kDecimalKey);
  } else {
    addNumber(*value.number());
  }
  endTerm(begin, descending);
}

void RowOrder::add(const jet::Row& row, const ValueSource& source, bool descending) {
  const std::size_t begin = keys_.size();
  std::int32_t integer = 0;
  if (isInteger(source.type)) {
    if (!row.integer(source.tableColumn, integer)) return add(runtime::Variant(), descending);
    addNumber(integer);
  } else if (isTextual(source.type)) {
    keys_ += kText;
    if (!row.sortKey(source.tableColumn, keys_)) keys_.back() = kNull;
  } else {
    return add(row.value(source.tableColumn), descending);
  }
  endTerm(begin, descending);
}

/// Ends a term so that none is a prefix of another: zeros inside it are escaped, and an unescaped
/// zero follows. A number has a fixed length and stays as it is.
void RowOrder::endTerm(std::size_t begin, bool descending) {
  constexpr char kMark = static_cast<char>(0xFF);
  if (keys_[begin] != kNumber) {
    for (std::size_t i = begin; (i = keys_.find('\0', i)) != std::string::npos; i += 2) {
      keys_.insert(i + 1, 1, kMark);
    }
    keys_ += '\0';
  }
  if (!descending) return;
  for (std::size_t i = begin; i < keys_.size(); ++i) keys_[i] = static_cast<char>(~keys_[i]);
}

void RowOrder::endRow() {
  if (keys_.size() > std::numeric_limits<std::uint32_t>::max() / 2) throw error::tooComplex();
  Entry entry{.begin = static_cast<std::uint32_t>(begin_),
              .size = static_cast<std::uint32_t>(keys_.size() - begin_),
              .index = static_cast<std::uint32_t>(entries_.size())};
  takeFront(entry);
  entries_.push_back(entry);
  begin_ = keys_.size();
}

/// Moves the next eight bytes of the entry's key into its front, or as many as are left.
void RowOrder::takeFront(Entry& entry) const {
  std::uint64_t front = 0;
  const std::size_t size = std::min<std::size_t>(entry.size, sizeof front);
  keys_.copy(reinterpret_cast<char*>(&front), size, entry.begin);
  entry.front = bigEndian(front);
  entry.begin += static_cast<std::uint32_t>(size);
  entry.size -= static_cast<std::uint32_t>(size);
}

std::vector<std::uint32_t> RowOrder::sorted() {
  // Entries of equal fronts are sorted again by the next bytes of their keys.
  std::vector<std::span<Entry>> unsorted{entries_};
  while (!unsorted.empty()) {
    std::span<Entry> rest = unsorted.back();
    unsorted.pop_back();
    std::ranges::sort(rest, {}, &Entry::front);
    while (!rest.empty()) {
      const auto end = std::ranges::find_if(
          rest, [&](const Entry& entry) { return entry.front != rest.front().front; });
      const std::span<Entry> equal(rest.begin(), end);
      rest = rest.subspan(equal.size());
      if (equal.size() == 1) continue;
      // None of the keys is a prefix of another, so they end together.
      if (equal.front().size == 0) {
        std::ranges::sort(equal, {}, &Entry::index);
      } else {
        for (Entry& entry : equal) takeFront(entry);
        unsorted.push_back(equal);
      }
    }
  }
  std::vector<std::uint32_t> indexes;
  indexes.reserve(entries_.size());
  for (const Entry& entry : entries_) indexes.push_back(entry.index);
  return indexes;
}

}  // namespace jetsql
