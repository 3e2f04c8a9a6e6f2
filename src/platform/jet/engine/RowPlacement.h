#pragma once

#include <optional>

#include "platform/jet/engine/FreeSpace.h"
#include "platform/jet/format/RowContent.h"

namespace jet {

/// Stores a row's new bytes where they fit. A row keeps its slot for good; when it outgrows its
/// page, its body moves to another page and the slot points there.
class RowPlacement {
 public:
  RowPlacement(PageChanges& changes, UsageMaps& maps, const TableSource& source);

  /// Stages the new row: a body on another page, the change of the row's own page, the removal of
  /// the old body. `old` is where the row is stored now.
  void store(RowId id, const FoundRow& old, const RowParts& parts);
  /// Stages the removal of a body that no row points to, or none after this change.
  void dropBody(RowPointer body);
  /// Stages the new state of the changed pages in the maps.
  void noteFreeSpace() { space_.noteTouched(); }

 private:
  bool storeAt(RowPointer at, const RowParts& parts, SlotMark mark);
  std::optional<RowPointer> bodyLeftOver(ByteView row) const;

  PageChanges& changes_;
  const TableSource& source_;
  FreeSpace space_;
};

}  // namespace jet
