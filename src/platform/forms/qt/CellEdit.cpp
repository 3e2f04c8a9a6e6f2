#include "platform/forms/qt/CellEdit.h"

#include <QKeyEvent>

#include "platform/forms/qt/CodePageValidator.h"
#include "platform/forms/qt/GridView.h"

namespace forms::qt {
namespace {

// The inset that the toolkit's line edit adds itself.
constexpr int kOwnInset = 2;

}  // namespace

CellEdit::CellEdit(GridView& view) : QLineEdit(view.viewport()), view_(view) {
  setFrame(false);
  setTextMargins(kCellInset - kEditorMargins.left() - kOwnInset, 0,
                 kCellInset - kEditorMargins.right() - kOwnInset, 0);
  setFocusPolicy(Qt::ClickFocus);
  new CodePageValidator(*this);
  hide();
}

void CellEdit::keyPressEvent(QKeyEvent* event) {
  const bool withinLine = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right ||
                          event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  if (withinLine || !view_.navigate(*event)) QLineEdit::keyPressEvent(event);
}

void CellEdit::mousePressEvent(QMouseEvent* event) {
  press_.begin(*event);
  QLineEdit::mousePressEvent(event);
}

void CellEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  if (press_.ends(*event)) view_.click();
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

}  // namespace forms::qt
