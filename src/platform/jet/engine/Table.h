#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jet/engine/Cursor.h"
#include "platform/jet/engine/IndexRange.h"
#include "platform/jet/engine/RowKey.h"
#include "platform/jet/engine/RowReader.h"
#include "platform/jet/engine/TableIdentity.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/runtime/Variant.h"

namespace jet {

/// An index that is stored in the file.
struct Index {
  std::u16string name;  ///< of the first logical index that uses it
  std::vector<RowKey::Part> columns;
  bool primary = false;
  bool unique = false;
  bool ignoreNulls = false;  ///< rows whose key columns are all null are not in it
  /// True when keys can be made for all its columns and sort as the values do: only then can it be
  /// walked by range, and only then does its order match that of `Row::sortKey`.
  bool seekable = false;
};

/// A table: its columns, its indexes and its rows. It is a snapshot of the definition, valid no
/// longer than the lock under which it was read.
class Table {
 public:
  /// Reads the definition. Raises damage where the page holds none.
  Table(Pager& pager, std::u16string name, PageNumber definitionPage);
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  const std::u16string& name() const { return source_.name; }
  PageNumber definitionPage() const { return source_.definitionPage; }
  /// The names by which an update finds the table, and a column by its index in `columns()`.
  TableIdentity identity() const { return {name(), definitionPage()}; }
  ColumnIdentity identity(ColumnIndex index) const { return identityOf(column(index)); }
  /// The columns in the order of their numbers, without deleted ones.
  const std::vector<ColumnDefinition>& columns() const { return source_.definition.columns; }
  const ColumnDefinition& column(ColumnIndex index) const { return source_.column(index); }
  /// The index of the column of that name, ignoring letter case.
  std::optional<ColumnIndex> columnNamed(std::u16string_view name) const;
  /// The table's stored indexes by their numbers (relationships share them).
  const std::vector<Index>& indexes() const { return indexes_; }
  const Index& index(IndexNumber number) const { return indexes_[number.value()]; }
  /// The first seekable index whose leading columns are these.
  std::optional<IndexNumber> indexOn(const std::vector<std::u16string_view>& columnNames) const;
  /// Number of rows as the file counts them; an estimate for system tables.
  std::uint32_t rowCount() const { return source_.definition.rowCount; }

  /// All rows in the order in which the file stores them.
  std::unique_ptr<Cursor> scan() const;
  /// The rows of an index's range in the index's order; the index must be seekable unless the range
  /// is unbounded.
  std::unique_ptr<Cursor> walk(IndexNumber index, const IndexRange& range) const;
  /// For reading single rows by their ids.
  RowReader reader() const;

  const TableSource& source() const { return source_; }

 private:
  TableSource source_;
  std::vector<Index> indexes_;
};

}  // namespace jet
