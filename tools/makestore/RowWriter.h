#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "makestore/LongValuePages.h"
#include "makestore/PageSpace.h"
#include "makestore/StoreTable.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/TableDefinition.h"

namespace makestore {

/// Writes a table's rows to data pages, in the order in which they were added.
class RowWriter {
 public:
  RowWriter(PageSpace& space, StoreTable& table, jet::PageNumber definitionPage,
            const jet::TableDefinition& definition);

  /// Writes all rows and the usage maps. Raises std::invalid_argument for a value that its column
  /// doesn't accept.
  void writeAll();
  /// The id of each row, for the entries of its indexes.
  const std::vector<jet::RowId>& ids() const { return ids_; }

 private:
  enum class Extent {
    Full,       ///< all columns
    FixedOnly,  ///< only the fixed columns: the shorter row that a moved row had before
  };

  jet::Bytes encodeRow(std::size_t row, Extent extent);
  jet::Bytes storedValue(const jet::ColumnDefinition& column, const runtime::Variant& value);
  void writeRow(std::size_t row);
  void openPage();
  void writeBody(std::size_t row);
  void fillPage();

  PageSpace& space_;
  StoreTable& table_;
  jet::PageNumber definitionPage_;
  const jet::TableDefinition& definition_;
  std::vector<LongValuePages> longValues_;
  std::vector<jet::PageNumber> pages_;
  std::vector<std::size_t> rowsOfPage_;  ///< the plain rows of the last page
  std::vector<jet::RowId> ids_;
};

}  // namespace makestore
