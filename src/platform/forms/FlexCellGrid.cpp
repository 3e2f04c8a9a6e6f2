#include "platform/forms/FlexCellGrid.h"

#include "platform/forms/qt/GridView.h"
#include "platform/runtime/RunTimeError.h"

namespace FlexCell {
namespace {

void requireInside(const QModelIndex& cell) {
  if (!cell.isValid()) throw runtime::RunTimeError(runtime::ErrorNumber::SubscriptOutOfRange);
}

}  // namespace

Grid::Grid(forms::Container& container, const GridDesign& design)
    : Control(container, design.control, 0,
              new forms::qt::GridView(container.client(), design,
                                      {.click = Click, .comboClick = ComboClick})),
      design_(design) {}

forms::qt::GridView& Grid::view() const {
  return static_cast<forms::qt::GridView&>(*widget());
}

void Grid::rescaled() {
  Control::rescaled();
  view().rescale(scale());
}

FlexCell::Cell Grid::Cell(int row, int column) {
  requireInside(view().cell(row, column));
  return {view(), row, column};
}

ActiveCell Grid::ActiveCell() const {
  const QModelIndex active = view().currentIndex();
  return {active.row(), active.column()};
}

FlexCell::Column Grid::Column(int column) {
  requireInside(view().cell(0, column));
  return {view(), column};
}

FlexCell::ComboList Grid::ComboBox(int column) {
  requireInside(view().cell(0, column));
  return {view(), column};
}

void Grid::RowHeight(int row, int pixels) {
  requireInside(view().cell(row, 0));
  view().setHeight(row, pixels);
}

}  // namespace FlexCell
