#include "platform/forms/qt/SheetEditors.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <utility>

#include "platform/forms/qt/OneLine.h"
#include "platform/forms/qt/SheetView.h"

namespace forms::qt {
namespace {

// The toolkit's line edit keeps this distance by itself.
constexpr int kOwnInset = 2;

/// The entries of a drop-down list: roomy enough for a finger, and in line with the cell's text.
class EntryPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const bool chosen = option.state.testFlag(QStyle::State_Selected);
    const QPalette& palette = option.palette;
    painter->fillRect(option.rect, palette.color(chosen ? QPalette::Highlight : QPalette::Base));
    painter->setFont(option.font);
    SheetPainter::paintText(*painter, option.rect, index.data().toString(),
                            palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {0, option.fontMetrics.height() * 8 / 5};
  }
};

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
  setItemDelegate(new EntryPainter(this));
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
