#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/jet/format/RowPointer.h"

namespace jetsql {

/// The rows of a table by the identity of some of their columns, for values that are looked up
/// often. Different identities may fall together: who looks up tests what he finds.
class RowLookup {
 public:
  /// Adds a row; all are added before the first search.
  void add(std::string_view identity, jet::RowId row);
  void finish();

  /// The place of the first row that may have the identity, or of the next one behind a place; 0
  /// when there is none.
  std::uint32_t first(std::string_view identity) const;
  std::uint32_t next(std::uint32_t place) const;
  jet::RowId row(std::uint32_t place) const;

 private:
  struct Entry {
    std::uint64_t hash;
    std::uint32_t row;   ///< packed
    std::uint32_t next;  ///< place of the next entry of this bucket, counted from 1
  };

  static std::uint64_t hashOf(std::string_view identity);
  std::uint32_t skip(std::uint32_t place, std::uint64_t hash) const;

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> buckets_;
};

}  // namespace jetsql
