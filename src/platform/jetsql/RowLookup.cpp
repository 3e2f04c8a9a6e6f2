#include "platform/jetsql/RowLookup.h"

#include <bit>
#include <functional>

namespace jetsql {

/// A mix that maps no two numbers to one hash.
std::uint64_t RowLookup::hashOf(double number) {
  // Both zeros are equal.
  auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  bits ^= bits >> 33U;
  bits *= 0xFF51AFD7ED558CCDU;
  bits ^= bits >> 33U;
  return bits;
}

std::uint64_t RowLookup::hashOf(std::string_view identity) {
  return std::hash<std::string_view>()(identity);
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

}  // namespace jetsql
