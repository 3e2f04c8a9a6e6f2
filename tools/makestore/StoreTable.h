#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/Variant.h"

namespace makestore {

/// A validation rule: an expression of the dialect (for a column, a criterion) and the message of a
/// refusal.
struct Rule {
  std::u16string expression;  ///< empty for none
  std::u16string text = {};   ///< may be empty
};

/// A column of a new table. Its number is its index among the table's columns.
struct Column {
  std::u16string name;
  jet::ColumnType type = jet::ColumnType::Long;
  std::size_t length = 0;  ///< text: characters at most; binary: bytes at most
  bool autonumber = false;
  bool compressed = true;       ///< text and memo: one byte a character where that is possible
  bool required = false;        ///< refuses null
  bool allowZeroLength = true;  ///< text and memo: accepts the empty text
  Rule rule = {};               ///< for the column's values
  std::uint8_t precision = 18;  ///< Numeric
  std::uint8_t scale = 0;       ///< Numeric
  /// As stored, without the bits of a fixed column and an autonumber.
  std::uint8_t flags = jet::ColumnFlag::kUpdatable;

  static Column text(std::u16string name, std::size_t length);
};

/// One column of an index's key.
struct KeyPart {
  std::u16string column;
  bool ascending = true;
};

/// An index of a new table.
struct Index {
  std::u16string name;
  std::vector<KeyPart> columns;
  bool primary = false;
  bool unique = false;
  bool ignoreNulls = false;
  bool required = false;  ///< no nulls
  /// Leaves are filled as the engine of the POS fills them: with as many entries as fit when the
  /// prefix that they share, row ids included, is stored once. Otherwise entries are written
  /// in full, with some room for more.
  bool packed = false;

  static Index primaryKey(std::u16string column);
  static Index plain(std::u16string column);
};

/// How a row is stored.
enum class Placement {
  Plain,
  Moved,    ///< its slot points to its body on the table's last page
  Deleted,  ///< its slot stays, marked as deleted
};

/// A new table. Its columns must be added before its rows; the file has the rows in the order in
/// which they were added.
class StoreTable {
 public:
  struct Row {
    std::vector<runtime::Variant> values;
    Placement placement = Placement::Plain;
  };

  explicit StoreTable(std::u16string_view name);

  StoreTable& column(Column column);
  StoreTable& index(Index index);
  /// Sets the validation rule of the rows.
  StoreTable& rule(Rule rule);
  /// Adds a row. Each value is null or of exactly its column's type (Byte: std::uint8_t, Integer:
  /// std::int16_t, Long: std::int32_t and so on); missing values are null.
  /// Raises std::invalid_argument for too many values.
  StoreTable& row(std::vector<runtime::Variant> values, Placement placement = Placement::Plain);

  /// Fills every data page but the last to its last byte, by lengthening the texts of its rows in
  /// this compressed text column.
  StoreTable& fillPagesThrough(std::u16string column);

  const std::u16string& name() const { return name_; }
  const std::vector<Column>& columns() const { return columns_; }
  std::vector<Column>& columns() { return columns_; }
  const std::vector<Index>& indexes() const { return indexes_; }
  const std::vector<Row>& rows() const { return rows_; }
  std::vector<Row>& rows() { return rows_; }
  const std::optional<std::u16string>& fillColumn() const { return fillColumn_; }

  /// Index of the column, case-sensitive. Raises std::invalid_argument where there is none.
  std::size_t columnIndex(std::u16string_view name) const;
  /// The stored form of the properties of the table and its columns; empty where there are none.
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
