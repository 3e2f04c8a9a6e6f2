#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Layout.h"
#include "platform/runtime/Variant.h"

namespace makestore {

/// A restriction of the store's owner: an expression of the dialect, for a column a criterion, and
/// the words for a refusal.
struct Rule {
  std::u16string expression;  ///< empty for none
  std::u16string text = {};   ///< may be empty
};

/// A column to be made. Its number is its place among the table's columns.
struct Column {
  std::u16string name;
  jet::ColumnType type = jet::ColumnType::Long;
  std::size_t length = 0;  ///< text: characters at most; binary: bytes at most
  bool autonumber = false;
  bool compressed = true;       ///< text and memo: one byte a character where that is possible
  bool required = false;        ///< refuses null
  bool allowZeroLength = true;  ///< text and memo: takes the empty text
  Rule rule = {};               ///< for the column's values
  std::uint8_t precision = 18;  ///< Numeric
  std::uint8_t scale = 0;       ///< Numeric
  std::uint8_t flags = 0x02;    ///< as stored, but for the fixed and the autonumber bit

  static Column text(std::u16string name, std::size_t length);
};

/// One column of an index's key.
struct KeyPart {
  std::u16string column;
  bool ascending = true;
};

/// An index to be made.
struct Index {
  std::u16string name;
  std::vector<KeyPart> columns;
  bool primary = false;
  bool unique = false;
  bool ignoreNulls = false;
  bool required = false;  ///< no nulls
  /// Leaves are filled as the engine of the POS fills them: to the last entry that fits once they
  /// leave out what their entries have in common, row pointers included. Otherwise entries are
  /// written in full, with some room for more.
  bool packed = false;

  static Index primaryKey(std::u16string column);
  static Index plain(std::u16string column);
};

/// Where a row lies.
enum class Placement {
  Plain,
  Moved,    ///< its slot points to its body on the table's last page
  Deleted,  ///< its slot is kept, the row is gone
};

/// A table to be made: columns and indexes first, then the rows, which lie in the file as added.
class Table {
 public:
  struct Row {
    std::vector<runtime::Variant> values;
    Placement placement = Placement::Plain;
  };

  explicit Table(std::u16string_view name);

  Table& column(Column column);
  Table& index(Index index);
  /// Restricts the rows.
  Table& rule(Rule rule);
  /// Adds a row. Each value is null or of exactly its column's kind (Byte: std::uint8_t, Integer:
  /// std::int16_t, Long: std::int32_t and so on); values left out are null.
  /// Raises std::invalid_argument for too many values.
  Table& row(std::vector<runtime::Variant> values, Placement placement = Placement::Plain);

  /// Makes every data page but the last full to its last byte, by lengthening the texts that the
  /// page's rows have in this compressed text column.
  Table& fillPagesThrough(std::u16string column);

  const std::u16string& name() const { return name_; }
  const std::vector<Column>& columns() const { return columns_; }
  std::vector<Column>& columns() { return columns_; }
  const std::vector<Index>& indexes() const { return indexes_; }
  const std::vector<Row>& rows() const { return rows_; }
  std::vector<Row>& rows() { return rows_; }
  const std::optional<std::u16string>& fillColumn() const { return fillColumn_; }

  /// Place of the column, letter case included. Raises std::invalid_argument where there is none.
  std::size_t columnIndex(std::u16string_view name) const;
  /// What the properties of the table and its columns are stored as; empty where there are none.
  jet::Bytes properties(jet::Version version) const;

 private:
  std::u16string name_;
  std::vector<Column> columns_;
  std::vector<Index> indexes_;
  std::vector<Row> rows_;
  Rule rule_;
  std::optional<std::u16string> fillColumn_;
};

}  // namespace makestore
