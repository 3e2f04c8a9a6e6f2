#pragma once

#include <cstdint>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jet/format/TextKey.h"

namespace jetsql {

/// A hash table of a table's rows by the values of some of their columns, for values that are
/// looked up often. Rows are found by the hash alone: a lookup may return rows with other values as
/// well.
class RowLookup {
 public:
  /// Reads the table. Rows with a null among these columns are left out.
  RowLookup(const jet::Table& table, const std::vector<jet::ColumnIndex>& columns);

  /// The position of the first row with these values, and that of the next one after it; 0 when
  /// there is none.
  std::uint32_t first(const std::vector<runtime::Variant>& values) const;
  std::uint32_t next(std::uint32_t position) const {
    const Entry& entry = entries_[position - 1];
    return skip(entry.next, entry.hash);
  }
  jet::RowId row(std::uint32_t position) const {
    return jet::RowId::unpack(entries_[position - 1].row);
  }

 private:
  struct Entry {
    std::uint64_t hash;
    std::uint32_t row;   ///< packed
    std::uint32_t next;  ///< position of the next entry of this bucket, counted from 1
  };

  std::uint32_t skip(std::uint32_t position, std::uint64_t hash) const {
    while (position != 0 && entries_[position - 1].hash != hash) {
      position = entries_[position - 1].next;
    }
    return position;
  }
  std::size_t bucket(std::uint64_t hash) const { return hash & (buckets_.size() - 1); }

  jet::TextOrder order_;
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> buckets_;
};

}  // namespace jetsql
