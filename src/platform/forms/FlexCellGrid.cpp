#include "platform/forms/FlexCellGrid.h"

#include "platform/forms/qt/SheetView.h"
#include "platform/forms/qt/Text.h"
#include "platform/runtime/RunTimeError.h"

namespace FlexCell {

using forms::qt::fromQt;
using forms::qt::SheetView;
using forms::qt::toQt;

namespace {

// So many blanks before its comma push an item's hidden part out of sight; fewer belong to the
// text.
constexpr std::size_t kHidingBlanks = 100;

std::u16string_view shownPart(std::u16string_view item) {
  const std::size_t comma = item.rfind(u',');
  if (comma == std::u16string_view::npos) return item;
  const std::size_t last = item.substr(0, comma).find_last_not_of(u' ');
  const std::size_t shown = last == std::u16string_view::npos ? 0 : last + 1;
  return comma - shown >= kHidingBlanks ? item.substr(0, shown) : item;
}

void demand(bool inside) {
  if (!inside) throw runtime::RunTimeError(runtime::ErrorNumber::SubscriptOutOfRange);
}

}  // namespace

struct Grid::Sheet {
  SheetView& view;
  bool focusRect = true;
  int rowIndexStyle = 0;

  QModelIndex cell(int row, int column) const { return view.cell(row, column); }
};

Grid::Grid(forms::Container& container, const GridDesign& design)
    : Control(container, design, 0, new SheetView(*this, design, clientOf(container))),
      sheet_(new Sheet{static_cast<SheetView&>(*widget())}) {}

Grid::~Grid() = default;

void Grid::rescaled() {
  Control::rescaled();
  sheet_->view.rescale(scale());
}

FlexCell::Cell Grid::Cell(int row, int column) {
  demand(sheet_->cell(row, column).isValid());
  return {*this, row, column};
}

ActiveCell Grid::ActiveCell() const {
  const QModelIndex active = sheet_->view.currentIndex();
  return {active.row(), active.column()};
}

FlexCell::Column Grid::Column(int column) {
  demand(sheet_->cell(0, column).isValid());
  return {*this, column};
}

FlexCell::ComboList Grid::ComboBox(int column) {
  demand(sheet_->cell(0, column).isValid());
  return {*this, column};
}

void Grid::RowHeight(int row, int pixels) {
  demand(sheet_->cell(row, 0).isValid());
  sheet_->view.setHeight(row, pixels);
}

void Grid::DisplayFocusRect(bool on) {
  sheet_->focusRect = on;
}

bool Grid::DisplayFocusRect() const {
  return sheet_->focusRect;
}

void Grid::DisplayRowIndex(int style) {
  sheet_->rowIndexStyle = style;
}

int Grid::DisplayRowIndex() const {
  return sheet_->rowIndexStyle;
}

std::u16string Cell::Text() const {
  const Grid::Sheet& sheet = *grid_.sheet_;
  return fromQt(sheet.view.sheet().text(sheet.cell(row_, column_)));
}

void Cell::Text(std::u16string_view text) {
  const Grid::Sheet& sheet = *grid_.sheet_;
  sheet.view.sheet().setText(sheet.cell(row_, column_), toQt(text));
}

void Cell::Alignment(int code) {
  const Grid::Sheet& sheet = *grid_.sheet_;
  sheet.view.sheet().setAlignmentCode(sheet.cell(row_, column_), code);
}

void Cell::Kind(CellType kind) {
  const Grid::Sheet& sheet = *grid_.sheet_;
  sheet.view.sheet().setKind(sheet.cell(row_, column_), kind);
}

void Cell::SetFocus() {
  const Grid::Sheet& sheet = *grid_.sheet_;
  sheet.view.setCurrentIndex(sheet.cell(row_, column_));
}

void Column::Locked(bool readOnly) {
  grid_.sheet_->view.sheet().setLocked(column_, readOnly);
}

void Column::Width(int pixels) {
  grid_.sheet_->view.setWidth(column_, pixels);
}

void Column::Kind(CellType kind) {
  grid_.sheet_->view.sheet().setColumnKind(column_, kind);
}

void Column::MaxLength(int characters) {
  grid_.sheet_->view.sheet().setMaxLength(column_, characters);
  grid_.sheet_->view.refreshEditor();
}

void ComboList::AddItem(std::u16string_view item) {
  grid_.sheet_->view.sheet().addItem(column_, toQt(shownPart(item)));
}

}  // namespace FlexCell
