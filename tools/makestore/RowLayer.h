#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "makestore/LongValueWriter.h"
#include "makestore/PageSpace.h"
#include "makestore/Table.h"
#include "platform/jet/format/RowPointer.h"
#include "platform/jet/format/TableDefinition.h"

namespace makestore {

/// Lays a table's rows on data pages, in the order in which they were added.
class RowLayer {
 public:
  RowLayer(PageSpace& space, Table& table, std::uint32_t definitionPage,
           const jet::TableDefinition& definition);

  /// Lays all rows and writes the usage maps. Raises std::invalid_argument for a value that its
  /// column doesn't take.
  void layAll();
  /// Where each row lies, as its indexes name it.
  const std::vector<jet::RowPointer>& places() const { return places_; }

 private:
  enum class Extent { Whole, FixedOnly };

  jet::Bytes encodeRow(std::size_t row, Extent extent);
  jet::Bytes storedValue(const jet::ColumnDefinition& column, const runtime::Variant& value);
  void lay(std::size_t row);
  void openPage();
  void layBody(std::size_t row);
  void fillPage();

  PageSpace& space_;
  Table& table_;
  std::uint32_t definitionPage_;
  const jet::TableDefinition& definition_;
  std::vector<LongValueWriter> longValues_;
  std::vector<std::uint32_t> pages_;
  std::vector<std::size_t> rowsOfPage_;  ///< the plain rows of the last page
  std::vector<jet::RowPointer> places_;
};

}  // namespace makestore
