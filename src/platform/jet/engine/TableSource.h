#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/engine/TableIdentity.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/TableDefinition.h"

namespace jet {

/// What is needed to read a table's rows: the pages and the definition.
struct TableSource {
  Pager& pager;
  std::u16string name;
  PageNumber definitionPage;
  TableDefinition definition;  ///< its columns in the order of their numbers

  /// Reads the definition from its chain of pages.
  TableSource(Pager& pages, std::u16string tableName, PageNumber page);

  const ColumnDefinition& column(ColumnIndex index) const {
    return definition.columns[index.value()];
  }
  const IndexDefinition& index(IndexNumber number) const {
    return definition.indexes[number.value()];
  }
  Location location(PageNumber page) const { return {pager.shownPath(), name, page}; }
  Version version() const { return definition.version; }
  bool hasVariableSlots() const { return definition.variableSlots > 0; }
};

/// The identity of the column.
ColumnIdentity identityOf(const ColumnDefinition& column);

/// A data page of a table, open for reading its rows.
struct OpenDataPage {
  Pager::Page page;
  DataPage rows;
};

/// The bytes of a row, found by its id: in its own slot, or where its pointer leads.
struct FoundRow {
  Pager::Page page;
  RowPointer body;  ///< the slot that holds the bytes
  ByteView bytes;
};

/// Finds a row; false where the slot doesn't exist or holds no row. Raises damage where a pointer
/// leads nowhere. `home` is the row's own page.
bool findRow(const TableSource& source, RowId id, const OpenDataPage& home, FoundRow& found);

/// The same, and reads the page; also false where the page isn't one of the table's.
bool findRow(const TableSource& source, RowId id, FoundRow& found);

/// Reads a data page of the table. Raises damage where the page isn't one.
OpenDataPage readDataPage(const TableSource& source, PageNumber number, const Location& from);

/// Reads a data page of the table; absent where the page isn't one.
std::optional<OpenDataPage> findDataPage(const TableSource& source, PageNumber number);

/// Reads the content of a definition's chain of pages, and adds their numbers to `pages` in order.
Bytes readDefinition(Pager& pager, const Location& first, std::vector<PageNumber>& pages);

}  // namespace jet
