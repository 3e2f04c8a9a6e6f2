#include "platform/forms/qt/SheetEditors.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>
#include <utility>

#include "platform/forms/qt/EntryPainter.h"
#include "platform/forms/qt/OneLine.h"
#include "platform/forms/qt/SheetView.h"

namespace forms::qt {
namespace {

// The toolkit's line edit keeps this distance by itself.
constexpr int kOwnInset = 2;

// In line with the cell's text, within the list's frame.
constexpr int kEntryInset = kCellInset - kEditorMargins.left() - 1;
constexpr int kEntryRoom = 11;

}  // namespace

CellEdit::CellEdit(SheetView& view) : QLineEdit(view.viewport()), view_(view) {
  setFrame(false);
  setTextMargins(kCellInset - kEditorMargins.left() - kOwnInset, 0,
                 kCellInset - kEditorMargins.right() - kOwnInset, 0);
  setFocusPolicy(Qt::ClickFocus);
  setValidator(new OneLine(this));
  hide();
}

void CellEdit::keyPressEvent(QKeyEvent* event) {
  const bool withinLine = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right ||
                          event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  if (withinLine || !view_.navigate(*event)) QLineEdit::keyPressEvent(event);
}

void CellEdit::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton;
  QLineEdit::mousePressEvent(event);
}

void CellEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton && std::exchange(pressed_, false)) view_.raiseClick();
}

void CellEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const bool comesBack =
      event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason;
  if (!comesBack) deselect();
}

bool CellEdit::focusNextPrevChild(bool next) {
  return view_.leave(next);
}

CellDropDown::CellDropDown(SheetView& view) : QComboBox(view.viewport()), view_(view) {
  setFocusPolicy(Qt::ClickFocus);
  setMaxVisibleItems(12);
  setItemDelegate(new EntryPainter(kEntryInset, kEntryRoom, this));
  hide();
}

void CellDropDown::showPopup() {
  view_.fillDropDown();
  QComboBox::showPopup();
}

void CellDropDown::paintEvent(QPaintEvent*) {
  const SheetColours& colours = view_.colours();
  QPainter painter(this);
  painter.fillRect(rect(), colours.active);
  const QRect cell = rect().marginsAdded(kEditorMargins).adjusted(0, 0, -1, -1);
  SheetPainter::paintDropDown(painter, cell, view_.sheet().text(view_.currentIndex()),
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
    view()->keyboardSearch({});  // forgets what was sought in the list the last time
    showPopup();
    view()->keyboardSearch(event->text());
  } else {
    event->ignore();
  }
}

void CellDropDown::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton;
}

void CellDropDown::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && std::exchange(pressed_, false)) {
    view_.raiseClick();
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
