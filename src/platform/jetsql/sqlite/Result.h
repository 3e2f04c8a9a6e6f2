#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/format/RowPointer.h"
#include "platform/jetsql/writing/ResultColumn.h"
#include "platform/runtime/Variant.h"

namespace jet {
class Row;
}

namespace jetsql {

struct ValueSource;

/// The rows of a statement, packed: a number takes as many bytes as its type needs, a text that the
/// file stores compressed one byte per character, other texts two.
class Result {
 public:
  explicit Result(std::vector<ResultColumn> columns = {}, std::size_t sourceRows = 0);

  const std::vector<ResultColumn>& columns() const { return columns_; }
  std::size_t count() const { return rows_.size(); }
  /// Raises the overflow error for a calculated number that the column's type doesn't hold.
  runtime::Variant value(std::size_t row, std::size_t column) const;
  /// Id of the table row that a column's value comes from; absent where it is calculated, and where
  /// an outer join found no row.
  std::optional<jet::RowId> rowOf(std::size_t row, std::size_t column) const;
  /// Replaces the values of the columns that come from one of a row's source rows, in their order.
  void replace(std::size_t row, int sourceRow, std::span<const runtime::Variant> values);

  /// To add a row, call `beginRow`, `add` for each column in order, `endRow`. `sourceIds` are the
  /// packed ids of the row's source rows, 0 for none. Raises the engine's error when the rows
  /// exceed the memory allowed for a result.
  void beginRow(std::span<const std::uint32_t> sourceIds);
  void add(const runtime::Variant& value);
  void add(const jet::Row& row, const ValueSource& source);
  void endRow() { rows_.push_back(store(packed_)); }
  /// Reorders the rows: `order` lists their indexes.
  void arrange(std::span<const std::uint32_t> order);

 private:
  template <class T>
  void put(char tag, const T& value);
  template <class T>
  void putHeld(const T& held);
  void putBytes(char tag, const void* bytes, std::size_t count, std::size_t unit);
  std::uint32_t sourceId(std::size_t row, int sourceRow) const;
  std::string_view store(std::string_view row);

  std::vector<ResultColumn> columns_;
  std::size_t sourceRows_ = 0;
  std::vector<std::string_view> rows_;
  std::vector<std::string> blocks_;  ///< of the rows; none grows beyond its first capacity
  std::size_t total_ = 0;            ///< bytes of the blocks
  std::string packed_;               ///< the row that is being added
  std::u16string text_;
};

}  // namespace jetsql
