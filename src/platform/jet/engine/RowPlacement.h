#pragma once

#include <optional>

#include "platform/jet/engine/FreeSpace.h"
#include "platform/jet/format/RowContent.h"

namespace jet {

/// Puts a row's new bytes where they fit. A row keeps its own slot for good; when it outgrows its
/// page its body goes elsewhere and the slot points there.
class RowPlacement {
 public:
  RowPlacement(PageChanges& changes, UsageMaps& maps, const TableSource& source);

  /// Stages the new row: a body on another page, the flip of the row's own page, the end of the old
  /// body. `old` is where the row is found now.
  void place(RowId id, const FoundRow& old, const RowParts& parts);
  /// Stages the end of a body that no row points to, or won't.
  void dropBody(RowPointer body);
  /// Stages what the maps say of the pages that were changed.
  void noteFreeSpace() { space_.noteTouched(); }

 private:
  bool placeAt(RowPointer at, const RowParts& parts, SlotMark mark);
  std::optional<RowPointer> bodyLeftOver(ByteView row) const;

  PageChanges& changes_;
  const TableSource& source_;
  FreeSpace space_;
};

}  // namespace jet
