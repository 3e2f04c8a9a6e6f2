#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/jet/engine/Pager.h"
#include "platform/jet/engine/TableIdentity.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/TableDefinition.h"

namespace jet {

/// What reading a table's rows takes: the pages and the definition.
struct TableSource {
  Pager& pager;
  std::u16string name;
  PageNumber definitionPage;
  TableDefinition definition;
  /// The columns by their index in `Table::columns()`.
  std::vector<ColumnDefinition> columns;

  /// Reads the definition from its chain of pages.
  TableSource(Pager& pages, std::u16string tableName, PageNumber page);

  Place place(PageNumber page) const { return {pager.shownPath(), name, page}; }
  Version version() const { return definition.version; }
  bool hasVariableSlots() const { return definition.variableSlots > 0; }
};

/// What names the column when the definition has been forgotten.
ColumnIdentity identityOf(const ColumnDefinition& column);

/// The bytes of a row, found by its id: on the row's own page, or where its pointer leads.
struct FoundRow {
  Pager::Page page;
  PageNumber bodyPage;  ///< number of the page that the bytes lie on
  SlotNumber bodySlot;
  ByteView bytes;
};

/// Finds a row; false where the slot doesn't exist or holds no row. Raises damage where a pointer
/// leads nowhere. `home` is the row's own page, already read.
bool findRow(const TableSource& source, RowId id, const Pager::Page& home, FoundRow& found);

/// The same with the page read; also false where the page isn't one of the table's.
bool findRow(const TableSource& source, RowId id, FoundRow& found);

/// The page, which has to be a data page of the table. Raises damage otherwise.
Pager::Page readDataPage(const TableSource& source, PageNumber page, const Place& from);

/// The same page; null where it isn't a data page of the table.
Pager::Page findDataPage(const TableSource& source, PageNumber number);

/// The content of a definition's chain of pages, which are added to `pages` in their order.
Bytes readDefinition(Pager& pager, const Place& first, std::vector<PageNumber>& pages);

}  // namespace jet
