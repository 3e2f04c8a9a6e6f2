#include "platform/jetsql/sqlite/RowLookup.h"

#include <bit>
#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "platform/jet/engine/TableSource.h"
#include "platform/jetsql/functions/Type.h"

namespace jetsql {
namespace {

/// Integers that follow each other have hashes that do as well, so that rows that are looked up in
/// the order of the table are next to each other in memory.
std::uint64_t hashOf(double number) {
  constexpr double kExact = std::int64_t{1} << 53U;
  if (std::abs(number) <= kExact) {
    const auto integer = static_cast<std::int64_t>(number);
    const auto bits = static_cast<std::uint64_t>(integer);
    if (static_cast<double>(integer) == number) return bits ^ bits >> 16U ^ bits >> 32U;
  }
  return std::hash<double>()(number);
}

std::uint64_t hashOf(std::string_view bytes) {
  return std::hash<std::string_view>()(bytes);
}

std::uint64_t hashOf(const runtime::Variant& value, jet::TextOrder order) {
  const auto& held = value.get();
  if (const auto* text = std::get_if<std::u16string>(&held)) {
    return hashOf(jet::textKey(order, *text));
  }
  if (const auto* guid = std::get_if<runtime::Guid>(&held)) {
    return hashOf({reinterpret_cast<const char*>(guid->bytes.data()), guid->bytes.size()});
  }
  return hashOf(value.number().value_or(0));
}

/// Absent for null.
std::optional<std::uint64_t> hashOf(const jet::Row& row, jet::ColumnIndex column, Type type,
                                    std::string& key) {
  if (isTextual(type)) {
    key.clear();
    if (!row.sortKey(column, key)) return std::nullopt;
    return hashOf(key);
  }
  if (std::int32_t integer = 0; isInteger(type)) {
    return row.integer(column, integer) ? std::optional(hashOf(integer)) : std::nullopt;
  }
  const runtime::Variant value = row.value(column);
  if (value.isNull()) return std::nullopt;
  return hashOf(value, jet::TextOrder());
}

std::uint64_t combined(std::uint64_t first, std::uint64_t second) {
  return first * 0x9E3779B97F4A7C15U + second;
}

}  // namespace

RowLookup::RowLookup(const jet::Table& table, const std::vector<jet::ColumnIndex>& columns)
    : order_(jet::textOrderOf(table.source().version())) {
  std::string key;
  for (const auto rows = table.scan(); rows->next();) {
    std::uint64_t hash = 0;
    bool hasNull = false;
    for (const jet::ColumnIndex column : columns) {
      const auto own = hashOf(rows->row(), column, typeOf(table.column(column).type), key);
      hasNull = hasNull || !own;
      hash = combined(hash, own.value_or(0));
    }
    if (!hasNull) entries_.push_back({hash, rows->row().id().pack(), 0});
  }
  buckets_.assign(std::bit_ceil(entries_.size() + 1), 0);
  // From the last to the first, so that each bucket lists its rows in the order of the table.
  for (std::size_t i = entries_.size(); i > 0; --i) {
    std::uint32_t& head = buckets_[bucket(entries_[i - 1].hash)];
    entries_[i - 1].next = head;
    head = static_cast<std::uint32_t>(i);
  }
}

std::uint32_t RowLookup::first(const std::vector<runtime::Variant>& values) const {
  std::uint64_t hash = 0;
  for (const runtime::Variant& value : values) hash = combined(hash, hashOf(value, order_));
  return skip(buckets_[bucket(hash)], hash);
}

}  // namespace jetsql
