#include "platform/forms/qt/GridView.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <limits>
#include <utility>

#include "platform/forms/qt/Raise.h"

namespace forms::qt {

using FlexCell::CellType;

namespace {

constexpr int kFixedColumnWidth = 24;
constexpr int kColumnWidth = 80;
constexpr int kEnterMovesDown = 1;

void prepareHeader(QHeaderView& header) {
  header.hide();
  header.setMinimumSectionSize(0);
  header.setSectionResizeMode(QHeaderView::Fixed);
}

}  // namespace

GridView::GridView(QWidget* parent, const FlexCell::GridDesign& design, const GridEvents& events)
    : QTableView(parent),
      design_(design),
      events_(events),
      gridModel_(new GridModel(design.rows, design.cols, this)),
      colours_(design, palette()),
      heights_(static_cast<std::size_t>(design.rows), design.defaultRowHeight),
      widths_(static_cast<std::size_t>(design.cols), kColumnWidth) {
  setModel(gridModel_);
  setItemDelegate(new GridPainter(*this));
  edit_ = new CellEdit(*this);
  dropDown_ = new CellDropDown(*this);
  setAccessibleName(QStringLiteral("Product sheet"));
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setShowGrid(false);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setTabKeyNavigation(false);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  prepareHeader(*horizontalHeader());
  prepareHeader(*verticalHeader());
  horizontalHeader()->setStretchLastSection(design.extendLastCol);
  widths_.front() = kFixedColumnWidth;
  applySizes();
  applyColours();
  connect(edit_, &QLineEdit::textEdited, this,
          [this](const QString& text) { gridModel_->setText(currentIndex(), text); });
  // Emitted for every choice by the user, also of the entry that is chosen already.
  connect(dropDown_, &QComboBox::activated, this, [this](int item) { pick(item); });
  connect(qApp, &QApplication::focusChanged, viewport(), qOverload<>(&QWidget::update));
  setCurrentIndex(cell(GridModel::kFixedRows, GridModel::kFixedColumns));
}

void GridView::setHeight(int row, int pixels) {
  heights_[static_cast<std::size_t>(row)] = pixels;
  applySizes();
}

void GridView::setWidth(int column, int pixels) {
  widths_[static_cast<std::size_t>(column)] = pixels;
  applySizes();
}

void GridView::rescale(double scale) {
  scale_ = scale;
  applySizes();
}

/// Rounded down, so that rows which fit the grid at full size fit it at any scale.
void GridView::applySizes() {
  for (int row = 0; row < design_.rows; ++row)
    setRowHeight(row, static_cast<int>(heights_[static_cast<std::size_t>(row)] * scale_));
  for (int column = 0; column < design_.cols; ++column)
    setColumnWidth(column, static_cast<int>(widths_[static_cast<std::size_t>(column)] * scale_));
}

/// The border is a `QFrame`'s, which is drawn in the palette's `WindowText`; the editor has the
/// colours of the active cell.
void GridView::applyColours() {
  colours_ = GridColours(design_, parentWidget()->palette());
  QPalette own;
  own.setColor(QPalette::WindowText, colours_.border);
  setPalette(own);
  QPalette edit;
  edit.setColor(QPalette::Base, colours_.active);
  edit.setColor(QPalette::Text, colours_.activeText);
  edit_->setPalette(edit);
}

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  const QPalette& outer = parentWidget()->palette();
  if (event->type() == QEvent::PaletteChange && GridColours(design_, outer) != colours_)
    applyColours();
}

QWidget* GridView::editor() const {
  if (!gridModel_->isEditable(currentIndex())) return nullptr;
  switch (gridModel_->kind(currentIndex())) {
    case CellType::Text:
      return edit_;
    case CellType::ComboBox:
      return dropDown_;
    case CellType::CheckBox:
      break;
  }
  return nullptr;
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!current.isValid()) return;  // during construction
  edit_->setText({});              // clears the undo history of the previous cell
  refreshEditor();
  edit_->selectAll();
}

void GridView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                           const QList<int>& roles) {
  QTableView::dataChanged(topLeft, bottomRight, roles);
  refreshEditor();
}

/// Moves the focus before it hides the old editor, or the toolkit would move it to another control.
void GridView::refreshEditor() {
  QWidget* const wanted = editor();
  syncEditor();
  updateEditorGeometries();
  if (wanted != nullptr) wanted->show();
  const QWidget* const focused = window()->focusWidget();
  if (focused == this || focused == edit_ || focused == dropDown_)
    (wanted != nullptr ? wanted : this)->setFocus();
  for (QWidget* other : {static_cast<QWidget*>(edit_), static_cast<QWidget*>(dropDown_)})
    if (other != wanted) other->hide();
}

void GridView::syncEditor() {
  const QWidget* const open = editor();
  if (open == nullptr) return;
  const QModelIndex active = currentIndex();
  const QString text = gridModel_->text(active);
  if (open == edit_) {
    edit_->setAccessibleName(gridModel_->label(active));
    const int limit = gridModel_->maxLength(active.column());
    // A longer text that the screen has set is not cut.
    const int room =
        limit > 0 ? qMax(limit, static_cast<int>(text.size())) : std::numeric_limits<int>::max();
    // Each set moves the caret to the end and clears the undo history.
    if (edit_->maxLength() != room) edit_->setMaxLength(room);
    if (edit_->text() != text) edit_->setText(text);
  }
  if (open == dropDown_) {
    dropDown_->setAccessibleName(gridModel_->label(active));
    fillDropDown();
    dropDown_->update();
  }
}

void GridView::fillDropDown() {
  const int column = currentIndex().column();
  const QStringList& items = gridModel_->items(column);
  const QString text = gridModel_->text(currentIndex());
  if (std::exchange(listedColumn_, column) != column || dropDown_->count() != items.size()) {
    dropDown_->clear();
    dropDown_->addItems(items);
  }
  if (dropDown_->currentIndex() < 0 || dropDown_->currentText() != text)
    dropDown_->setCurrentIndex(items.indexOf(text));
}

void GridView::openDropDown() {
  if (editor() == dropDown_ && !process::hasEnded()) dropDown_->showPopup();
}

/// The cell gets its text before the event is raised.
void GridView::pick(int item) {
  gridModel_->setText(currentIndex(), dropDown_->itemText(item));
  qt::raise(events_.comboClick, static_cast<std::int16_t>(item));
}

void GridView::updateEditorGeometries() {
  QTableView::updateEditorGeometries();
  if (QWidget* open = editor())
    open->setGeometry(visualRect(currentIndex()).marginsRemoved(kEditorMargins));
}

void GridView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  if (QWidget* open = editor(); open != nullptr && !leaving_) open->setFocus(event->reason());
}

/// The tab order has the grid itself, not its editors, so the move to the next control starts at
/// the grid.
bool GridView::leave(bool next) {
  leaving_ = true;
  setFocus();
  const bool left = focusNextPrevChild(next);
  leaving_ = false;
  if (!left && editor() != nullptr) editor()->setFocus();
  return left;
}

bool GridView::navigate(const QKeyEvent& event) {
  if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0)
    return false;
  switch (event.key()) {
    case Qt::Key_Up:
      step(-1, 0);
      return true;
    case Qt::Key_Down:
      step(1, 0);
      return true;
    case Qt::Key_Left:
      step(0, -1);
      return true;
    case Qt::Key_Right:
      step(0, 1);
      return true;
    case Qt::Key_Home:
    case Qt::Key_PageUp:
      step(-design_.rows, 0);
      return true;
    case Qt::Key_End:
    case Qt::Key_PageDown:
      step(design_.rows, 0);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (design_.enterKeyMoveTo == kEnterMovesDown) step(1, 0);
      return true;
    default:
      return false;
  }
}

/// Skips rows without height and, sideways, locked columns; stops at the last row or column.
void GridView::step(int rows, int columns) {
  const QModelIndex from = currentIndex();
  const auto free = [this](const QModelIndex& at) {
    return !gridModel_->isFixed(at) && rowHeight(at.row()) > 0;
  };
  QModelIndex to = from;
  const int down = rows < 0 ? -1 : 1;
  for (int row = from.row() + down, left = qAbs(rows); left > 0 && row >= 0 && row < design_.rows;
       row += down) {
    if (!free(cell(row, from.column()))) continue;
    to = cell(row, from.column());
    --left;
  }
  const int right = columns < 0 ? -1 : 1;
  for (int column = from.column() + right, left = qAbs(columns);
       left > 0 && column >= 0 && column < design_.cols; column += right) {
    if (gridModel_->isLocked(column) || !free(cell(from.row(), column))) continue;
    to = cell(from.row(), column);
    --left;
  }
  setCurrentIndex(to);
}

void GridView::keyPressEvent(QKeyEvent* event) {
  const bool space = event->key() == Qt::Key_Space && !event->isAutoRepeat();
  if (space && gridModel_->kind(currentIndex()) == CellType::CheckBox)
    toggle(currentIndex());
  else if (!navigate(*event))
    event->ignore();
}

bool GridView::holdsFocus() const {
  return hasFocus() || edit_->hasFocus() || dropDown_->hasFocus() || dropDown_->view()->isVisible();
}

void GridView::announceCell() {
  if (!QAccessible::isActive() || !holdsFocus()) return;
  QAccessibleEvent event(accessibleCell(currentIndex()), QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

QAccessibleInterface* GridView::accessibleCell(const QModelIndex& cell) {
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(this);
  return table->tableInterface()->cellAt(cell.row(), cell.column());
}

void GridView::toggle(const QModelIndex& cell) {
  if (!gridModel_->isEditable(cell)) return;
  gridModel_->setText(cell,
                      gridModel_->text(cell) == u"1" ? QStringLiteral("0") : QStringLiteral("1"));
  if (!QAccessible::isActive()) return;
  QAccessible::State changed;
  changed.checked = true;
  QAccessibleStateChangeEvent event(accessibleCell(cell), changed);
  QAccessible::updateAccessibility(&event);
}

void GridView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const QModelIndex hit = indexAt(event->position().toPoint());
  pressed_ = hit;
  // A press on a fixed header selects the cell next to it.
  if (hit.isValid())
    setCurrentIndex(
        cell(qMax(hit.row(), GridModel::kFixedRows), qMax(hit.column(), GridModel::kFixedColumns)));
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_.isValid()) return;
  const QModelIndex pressed = std::exchange(pressed_, QPersistentModelIndex());
  const bool same = indexAt(event->position().toPoint()) == pressed;
  if (same && gridModel_->kind(pressed) == CellType::CheckBox) toggle(pressed);
  click();
  if (same && pressed == currentIndex()) openDropDown();
}

// A drag selects no cells, and the second press of a double click is an ordinary press.
void GridView::mouseMoveEvent(QMouseEvent*) {}

void GridView::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

void GridView::click() {
  qt::raise(events_.click);
}

void GridView::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace forms::qt
