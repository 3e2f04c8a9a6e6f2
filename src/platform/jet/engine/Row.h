#pragma once

#include <string>

#include "platform/jet/format/RowPointer.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// One row, whose columns are decoded when they are asked for. Columns are named by their place in
/// `Table::columns()`.
class Row {
 public:
  /// The row's identity, by which it can be read and updated later.
  RowId id() const;
  bool isNull(int column) const;
  /// The column's value by its type: Boolean bool, Byte uint8, Integer int16, Long int32, Currency,
  /// Single float, Double double, DateTime Date, Text and Memo text, Binary, OLE and Block Binary,
  /// Guid, Numeric Decimal.
  runtime::Variant value(int column) const;

  /// Fast paths for Text and Memo columns; each replaces what `out` held and gives false for null.
  bool text(int column, std::u16string& out) const;
  bool utf8(int column, std::string& out) const;
  /// The text's key in the file's order (see TextKey.h).
  bool sortKey(int column, std::string& out) const;
  /// Fast path for Byte, Integer, Long and Boolean (true is -1) columns; false for null.
  bool integer(int column, std::int32_t& out) const;
};

}  // namespace jet
