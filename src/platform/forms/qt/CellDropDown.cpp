#include "platform/forms/qt/CellDropDown.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/GridView.h"
#include "platform/forms/qt/Later.h"

namespace forms::qt {
namespace {

// Aligns the entries with the cell's text; the list's frame takes one pixel.
constexpr int kEntryInset = kCellInset - kEditorMargins.left() - 1;

}  // namespace

CellDropDown::CellDropDown(GridView& view) : QComboBox(view.viewport()), view_(view) {
  setFocusPolicy(Qt::ClickFocus);
  setMaxVisibleItems(12);
  setItemDelegate(new EntryPainter(kEntryInset, this));
  hide();
}

void CellDropDown::showPopup() {
  view_.fillDropDown();
  QComboBox::showPopup();
}

void CellDropDown::hidePopup() {
  QComboBox::hidePopup();
  // Once the list has closed the toolkit tells screen readers that the table has the focus.
  later(view_, [this] { view_.announceCell(); });
}

void CellDropDown::paintEvent(QPaintEvent*) {
  const GridColours& colours = view_.colours();
  QPainter painter(this);
  painter.fillRect(rect(), colours.active);
  const QRect cell = rect().marginsAdded(kEditorMargins).adjusted(0, 0, -1, -1);
  GridPainter::paintDropDown(painter, cell, view_.gridModel().text(view_.currentIndex()),
                             colours.activeText);
}

void CellDropDown::keyPressEvent(QKeyEvent* event) {
  const bool alt = event->modifiers().testFlag(Qt::AltModifier);
  const int key = event->key();
  const bool opens = key == Qt::Key_F4 || (alt && (key == Qt::Key_Down || key == Qt::Key_Up)) ||
                     (key == Qt::Key_Space && !alt);
  if (opens) {
    showPopup();
  } else if (view_.navigate(*event)) {
    return;
  } else if (!event->text().isEmpty() && event->text().front().isPrint() && !alt) {
    view()->keyboardSearch({});  // resets the last search
    showPopup();
    view()->keyboardSearch(event->text());
  } else {
    event->ignore();
  }
}

void CellDropDown::mousePressEvent(QMouseEvent* event) {
  press_.begin(*event);
}

void CellDropDown::mouseReleaseEvent(QMouseEvent* event) {
  if (press_.ends(*event)) {
    view_.click();
    view_.openDropDown();
  }
}

void CellDropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

bool CellDropDown::focusNextPrevChild(bool next) {
  return view_.leave(next);
}

}  // namespace forms::qt
