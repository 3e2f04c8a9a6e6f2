#include "platform/jetsql/RowLookup.h"

#include <bit>
#include <functional>

namespace jetsql {

std::uint64_t RowLookup::hashOf(std::string_view identity) {
  return std::hash<std::string_view>()(identity);
}

void RowLookup::add(std::string_view identity, jet::RowId row) {
  entries_.push_back({hashOf(identity), row.pack(), 0});
}

void RowLookup::finish() {
  buckets_.assign(std::bit_ceil(entries_.size() + 1), 0);
  // From the last to the first, so that each bucket lists its rows in the order of the table.
  for (std::size_t i = entries_.size(); i > 0; --i) {
    std::uint32_t& head = buckets_[entries_[i - 1].hash & (buckets_.size() - 1)];
    entries_[i - 1].next = head;
    head = static_cast<std::uint32_t>(i);
  }
}

std::uint32_t RowLookup::first(std::string_view identity) const {
  const std::uint64_t hash = hashOf(identity);
  return skip(buckets_[hash & (buckets_.size() - 1)], hash);
}

std::uint32_t RowLookup::next(std::uint32_t place) const {
  const Entry& entry = entries_[place - 1];
  return skip(entry.next, entry.hash);
}

jet::RowId RowLookup::row(std::uint32_t place) const {
  return jet::RowId::unpack(entries_[place - 1].row);
}

std::uint32_t RowLookup::skip(std::uint32_t place, std::uint64_t hash) const {
  while (place != 0 && entries_[place - 1].hash != hash) place = entries_[place - 1].next;
  return place;
}

}  // namespace jetsql
