#include "platform/jetsql/sqlite/RowLookup.h"

#include <bit>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/TextKey.h"

namespace jetsql {
namespace {

/// A bijective mix: no two numbers have the same hash.
std::uint64_t hashOf(double number) {
  // Zero and negative zero are equal.
  auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  bits ^= bits >> 33U;
  bits *= 0xFF51AFD7ED558CCDU;
  bits ^= bits >> 33U;
  return bits;
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
std::optional<std::uint64_t> hashOf(const jet::Row& row, jet::ColumnIndex column,
                                    jet::ColumnType type, std::string& key) {
  if (jet::isText(type)) {
    if (!row.sortKey(column, key)) return std::nullopt;
    return hashOf(key);
  }
  const runtime::Variant value = row.value(column);
  if (value.isNull()) return std::nullopt;
  return hashOf(value, jet::TextOrder());
}

std::uint64_t combined(std::uint64_t first, std::uint64_t second) {
  return std::rotl(first, 23) ^ second;
}

}  // namespace

RowLookup::RowLookup(const jet::Table& table, const std::vector<jet::ColumnIndex>& columns)
    : order_(jet::textOrderOf(table.source().version())) {
  std::string key;
  for (const auto rows = table.scan(); rows->next();) {
    std::uint64_t hash = 0;
    bool hasNull = false;
    for (const jet::ColumnIndex column : columns) {
      const auto own = hashOf(rows->row(), column, table.column(column).type, key);
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
