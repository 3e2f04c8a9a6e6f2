#include "platform/forms/FlexCellColumn.h"

#include "platform/forms/qt/GridView.h"

namespace FlexCell {

void Column::Locked(bool readOnly) {
  view_.gridModel().setLocked(column_, readOnly);
}

void Column::Width(int pixels) {
  view_.setWidth(column_, pixels);
}

void Column::Kind(CellType kind) {
  view_.gridModel().setColumnKind(column_, kind);
}

void Column::MaxLength(int characters) {
  view_.gridModel().setMaxLength(column_, characters);
  view_.refreshEditor();
}

}  // namespace FlexCell
