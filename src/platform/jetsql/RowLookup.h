#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/jet/format/RowPointer.h"

namespace jetsql {

/// The rows of a table by the identity of some of their columns, for values that are looked up
/// often. Identities come as hashes: rows of different numbers never fall together, rows of
/// anything else may, so who looks them up tests what he finds.
class RowLookup {
 public:
  static std::uint64_t hashOf(double number);
  static std::uint64_t hashOf(std::string_view identity);

  /// Adds a row; all are added before the first search.
  void add(std::uint64_t hash, jet::RowId row) { entries_.push_back({hash, row.pack(), 0}); }
  void finish();

  /// The place of the first row of that hash, or of the next one behind a place; 0 when there is
  /// none.
  std::uint32_t first(std::uint64_t hash) const {
    return skip(buckets_[hash & (buckets_.size() - 1)], hash);
  }
  std::uint32_t next(std::uint32_t place) const {
    const Entry& entry = entries_[place - 1];
    return skip(entry.next, entry.hash);
  }
  jet::RowId row(std::uint32_t place) const { return jet::RowId::unpack(entries_[place - 1].row); }

 private:
  struct Entry {
    std::uint64_t hash;
    std::uint32_t row;   ///< packed
    std::uint32_t next;  ///< place of the next entry of this bucket, counted from 1
  };

  std::uint32_t skip(std::uint32_t place, std::uint64_t hash) const {
    while (place != 0 && entries_[place - 1].hash != hash) place = entries_[place - 1].next;
    return place;
  }

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> buckets_;
};

}  // namespace jetsql
