#include "platform/forms/FlexCellCell.h"

#include "platform/forms/qt/GridView.h"
#include "platform/forms/qt/WideText.h"

namespace FlexCell {

std::u16string Cell::Text() const {
  return forms::qt::fromQt(view_.gridModel().text(view_.cell(row_, column_)));
}

void Cell::Text(std::u16string_view text) {
  view_.gridModel().setText(view_.cell(row_, column_), forms::qt::toQt(text));
}

void Cell::Alignment(int code) {
  view_.gridModel().setAlignmentCode(view_.cell(row_, column_), code);
}

void Cell::Kind(CellType kind) {
  view_.gridModel().setKind(view_.cell(row_, column_), kind);
}

void Cell::SetFocus() {
  view_.setCurrentIndex(view_.cell(row_, column_));
}

}  // namespace FlexCell
