#pragma once

#include <cstdint>
#include <vector>

#include "makestore/PageSpace.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/TableDefinition.h"

namespace makestore {

/// Writes the values of one memo or OLE column: short ones stay in their rows, the others go to
/// pages of the column, each with one or more of them.
class LongValuePages {
 public:
  LongValuePages(PageSpace& space, const jet::LongValueMaps& maps) : space_(space), maps_(maps) {}

  jet::ColumnNumber column() const { return maps_.column; }
  /// Writes a value and returns the part of it that is stored in the row.
  jet::Bytes write(jet::ByteView value);
  /// Writes the column's usage maps.
  void finish();

 private:
  jet::RowPointer addPiece(jet::ByteView piece);

  PageSpace& space_;
  jet::LongValueMaps maps_;
  std::vector<jet::PageNumber> pages_;
};

}  // namespace makestore
