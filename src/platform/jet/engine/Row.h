#pragma once

#include <optional>
#include <string>

#include "platform/jet/format/RowContent.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/runtime/Variant.h"

namespace jet {

struct FoundRow;
struct TableSource;

/// One row, whose columns are decoded on demand. Columns are named by their index in
/// `Table::columns()`.
class Row {
 public:
  Row() = default;
  /// The found row's page must outlive the object.
  Row(const TableSource& source, RowId id, const FoundRow& found);

  /// The row's identity, by which it can be read and updated later.
  RowId id() const { return id_; }
  bool isNull(ColumnIndex column) const;
  /// The column's value by its type: Boolean bool, Byte uint8, Integer int16, Long int32, Currency,
  /// Single float, Double double, DateTime Date, Text and Memo text, Binary, OLE and Block Binary,
  /// Guid, Numeric Decimal.
  runtime::Variant value(ColumnIndex column) const;

  /// Fast path for Text and Memo columns; replaces the content of `out`, and returns false for
  /// null.
  bool text(ColumnIndex column, std::u16string& out) const;
  /// The text as bytes of one character each, U+0000 to U+00FF, where the row stores it in that
  /// form; absent for null, for a memo and for any other text.
  std::optional<ByteView> latinText(ColumnIndex column) const;
  /// Appends the text's key in the file's order (see TextKey.h); false for null.
  bool sortKey(ColumnIndex column, std::string& key) const;
  /// Fast path for Byte, Integer, Long and Boolean (true is -1) columns; false for null.
  bool integer(ColumnIndex column, std::int32_t& out) const;

  /// The bytes of a column in the row; absent for null, and for Boolean.
  std::optional<ByteView> stored(ColumnIndex column) const;
  /// The row's bytes, opened.
  const RowContent& content() const { return content_; }

 private:
  const Location& location() const { return content_.location(); }
  std::optional<ByteView> stored(const ColumnDefinition& definition) const;
  /// Calls `use` with the stored bytes of a text, inside the row or outside; false for null.
  template <class Use>
  bool withText(ColumnIndex column, Use use) const;

  const TableSource* source_ = nullptr;
  RowId id_;
  RowContent content_;
};

}  // namespace jet
