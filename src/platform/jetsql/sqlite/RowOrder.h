#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/jet/engine/Row.h"
#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {

/// Sorts rows by the keys of their values: null first, numbers before texts, texts in the file's
/// order. Rows of equal keys keep the order in which they were added.
class RowOrder {
 public:
  explicit RowOrder(jet::TextOrder order) : order_(order) {}

  /// To add a row, call `add` for each term in order, then `endRow`.
  void add(const runtime::Variant& value, bool descending);
  void add(const jet::Row& row, const ValueSource& source, bool descending);
  void endRow();

  /// The indexes of the rows in sorted order.
  std::vector<std::uint32_t> sorted();

 private:
  struct Entry {
    std::uint64_t front = 0;  ///< bytes of the key, as a number
    std::uint32_t begin = 0;  ///< index in `keys_` of the key's bytes after `front`
    std::uint32_t size = 0;
    std::uint32_t index = 0;
  };

  void addNumber(double number);
  void endTerm(std::size_t begin, bool descending);
  void takeFront(Entry& entry) const;

  jet::TextOrder order_;
  std::string keys_;
  std::size_t begin_ = 0;  ///< of the key that is being added
  std::vector<Entry> entries_;
};

}  // namespace jetsql
