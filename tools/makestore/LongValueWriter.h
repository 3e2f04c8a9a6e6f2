#pragma once

#include <cstdint>
#include <vector>

#include "makestore/PageSpace.h"
#include "platform/jet/format/Bytes.h"
#include "platform/jet/format/TableDefinition.h"

namespace makestore {

/// Writes the values of one memo or OLE column: short ones stay in their rows, the others go to
/// pages of the column's own, where several share a page.
class LongValueWriter {
 public:
  LongValueWriter(PageSpace& space, const jet::LongValueMaps& maps) : space_(space), maps_(maps) {}

  jet::ColumnNumber column() const { return maps_.column; }
  /// What the row holds of the value.
  jet::Bytes write(jet::ByteView value);
  /// Writes the column's usage maps.
  void finish();

 private:
  jet::RowPointer addPiece(jet::ByteView piece);

  PageSpace& space_;
  jet::LongValueMaps maps_;
  std::vector<std::uint32_t> pages_;
};

}  // namespace makestore
