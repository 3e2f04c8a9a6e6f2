#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/engine/Cursor.h"
#include "platform/jet/engine/Row.h"
#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/runtime/Variant.h"

namespace jet {

class Store;

struct Column {
  std::u16string name;
  ColumnType type = ColumnType::Long;
  /// Bytes that a value may take; 0 for memo and OLE. A Jet 4 text takes two a character.
  std::uint16_t size = 0;
  bool autonumber = false;
  std::uint8_t scale = 0;  ///< of a Numeric
};

struct IndexColumn {
  int column = 0;  ///< place in `Table::columns()`
  bool ascending = true;
};

struct Index {
  std::u16string name;  ///< of the first logical index that uses it
  std::vector<IndexColumn> columns;
  bool primary = false;
  bool unique = false;
  bool ignoreNulls = false;  ///< rows whose key columns are all null are not in it
  /// True when keys can be made for all its columns: only then can it be walked by range, and only
  /// then does its order agree with that of `Row::sortKey`.
  bool seekable = false;
};

/// The part of an index that a cursor walks. The rows given are at least those that meet all of it;
/// where a bound can't be turned into a key of the column's type (a text that is no number, a
/// character outside the order's tables) that bound is left out, so the caller still tests each
/// row.
struct IndexRange {
  struct Bound {
    runtime::Variant value;
    bool inclusive = true;
  };
  /// Values of the leading columns; a null asks for null.
  std::vector<runtime::Variant> equal;
  /// Bounds on the column behind those, by its values whatever the index's direction; with a bound
  /// or with `notNull`, nulls of that column are left out.
  std::optional<Bound> lower;
  std::optional<Bound> upper;
  bool notNull = false;
};

/// A table: its columns, its indexes and its rows.
class Table {
 public:
  Table(Store& store, std::u16string name, std::uint32_t definitionPage);
  ~Table();
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  const std::u16string& name() const { return name_; }
  std::uint32_t definitionPage() const { return definitionPage_; }
  /// The columns in the order of their numbers, without deleted ones.
  const std::vector<Column>& columns() const { return columns_; }
  /// The place of the column of that name, letter case aside.
  std::optional<int> columnNamed(std::u16string_view name) const;
  /// The indexes that the file keeps for the table (relationships share them).
  const std::vector<Index>& indexes() const { return indexes_; }
  /// Number of rows as the file counts them; an estimate for system tables.
  std::uint32_t rowCount() const;

  /// All rows in the order in which they lie in the file.
  std::unique_ptr<Cursor> scan() const;
  /// The rows of an index's range in the index's order; `index` is a place in `indexes()`, and must
  /// be seekable unless the range is empty.
  std::unique_ptr<Cursor> walk(int index, const IndexRange& range) const;
  /// One row by its id; raises -2147217864 when there is no such row.
  std::unique_ptr<Cursor> at(RowId row) const;

 private:
  friend class Store;
  struct Definition;

  Store& store_;
  std::u16string name_;
  std::uint32_t definitionPage_;
  std::vector<Column> columns_;
  std::vector<Index> indexes_;
  std::unique_ptr<Definition> definition_;
};

}  // namespace jet
