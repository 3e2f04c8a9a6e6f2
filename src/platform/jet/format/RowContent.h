#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/jet/format/Bits.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/TableDefinition.h"

namespace jet {

/// The bytes of one row, opened: number of columns, fixed area, variable values, null mask.
///
///   n | fixed area | variable values | end | offsets, backwards | (Jet 3: jumps) | nv | null mask
///
/// n is the number of columns, end the offset at which the variable values end, nv the number of
/// variable slots. They and the offsets take `rowUnit` bytes. In Jet 3 that is one, and the jumps
/// are the slots at which the offsets pass another multiple of 256. A table without variable
/// columns has none of the parts between the fixed area and the null mask.
class RowContent {
 public:
  RowContent() = default;
  /// Checks the row's trailer; raises damage where it doesn't fit the row. `hasVariable` tells
  /// whether the table's definition has variable slots. The bytes must outlive the object.
  RowContent(Version version, ByteView row, bool hasVariable, const Location& location);

  /// The column's bit of the null mask; false for a number that the row doesn't have.
  bool hasValue(ColumnNumber column) const {
    return column.value() < columnCount_ && bitOf(row_.subspan(maskAt_), column.value());
  }
  /// The value of a column in the fixed area. Raises damage where it would lie outside.
  ByteView fixed(const ColumnDefinition& column) const;
  /// The fixed area as far as the row has it. Raises damage where its end lies outside the row.
  ByteView fixedArea() const;
  /// The bytes of a variable slot; absent for a slot that the row doesn't have. Raises damage where
  /// they lie outside the row.
  std::optional<ByteView> variable(VariableSlot slot) const;
  /// The page that holds the bytes.
  const Location& location() const { return location_; }

 private:
  std::size_t unitAt(std::size_t at) const;
  std::size_t offsetAt(std::size_t slot) const;

  ByteView row_;
  Location location_;
  std::size_t unit_ = 0;  ///< bytes of each count and offset; the fixed area follows the first one
  std::size_t columnCount_ = 0;
  std::size_t maskAt_ = 0;
  std::size_t variableCount_ = 0;
  std::size_t trailerAt_ = 0;   ///< where the offsets, or without them the mask, begin
  std::size_t offsetsEnd_ = 0;  ///< end of the offsets; the first slot's is stored last, before it
  std::size_t jumpsEnd_ = 0;    ///< Jet 3: end of the jumps; the first one is stored last
  std::size_t jumpCount_ = 0;   ///< Jet 3: jumps in use
  bool hasVariable_ = false;
};

/// The parts from which a row is encoded.
struct RowParts {
  std::size_t columnCount = 0;
  Bytes fixedArea;
  /// Values of the variable slots, as many as the definition has; empty ones take no room.
  std::vector<Bytes> variable;
  /// Column numbers with a value (Boolean: with the value true).
  std::vector<bool> hasValue;
  /// False for a table without variable slots.
  bool hasVariable = true;

  /// The row's bytes. A row with variable slots is padded to at least `atLeast` bytes, between the
  /// values and the offsets; in Jet 3 it may become longer than that. A row without variable slots
  /// ignores `atLeast`.
  Bytes encode(Version version, std::size_t atLeast = 0) const;
};

}  // namespace jet
