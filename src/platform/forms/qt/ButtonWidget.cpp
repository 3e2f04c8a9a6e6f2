#include "platform/forms/qt/ButtonWidget.h"

#include <QAccessible>
#include <QDragEnterEvent>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DragData.h"
#include "platform/forms/qt/KeyBlock.h"
#include "platform/forms/qt/Pixels.h"
#include "platform/forms/qt/Raise.h"

namespace forms::qt {
namespace {

/// Accepts a drag of text, as a move where the source offers one.
bool acceptText(QDropEvent& event) {
  if (!event.mimeData()->hasFormat(kPlainText)) {
    event.ignore();
    return false;
  }
  event.setDropAction(event.possibleActions() & Qt::MoveAction ? Qt::MoveAction : Qt::CopyAction);
  event.accept();
  return true;
}

bool isPressKey(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return ||
         event.key() == Qt::Key_Enter;
}

}  // namespace

ButtonWidget::ButtonWidget(QWidget* parent, const ButtonEvents& events,
                           std::function<ButtonColours(ButtonState)> colours)
    : QAbstractButton(parent), events_(events), colours_(std::move(colours)) {
  setFocusPolicy(Qt::StrongFocus);
}

void ButtonWidget::setKeyNumber(int number) {
  keyName_ = "Key " + QString::number(number);
}

void ButtonWidget::setCaption(const QString& text) {
  caption_.set(text);
  setAccessibleName(text.isEmpty() ? keyName_ : text);
  update();
}

void ButtonWidget::setTextFont(const QFont& font) {
  caption_.set(font);
  update();
}

ButtonState ButtonWidget::state() const {
  if (drawnDown_) return ButtonState::Down;
  if (hovered_) return ButtonState::Over;
  return hasFocus() ? ButtonState::Focus : ButtonState::Rest;
}

QColor ButtonWidget::restColour() const {
  return drawnColour(colours_(ButtonState::Rest).back, palette());
}

void ButtonWidget::announceCurrent() {
  const bool current = isCurrent();
  if (std::exchange(announcedCurrent_, current) == current) return;
  QAccessible::State changed;
  changed.selected = true;
  QAccessibleStateChangeEvent event(this, changed);
  QAccessible::updateAccessibility(&event);
}

void ButtonWidget::raiseClick() {
  qt::raise(events_.click);
  if (isKey()) announceCurrentKeys(*this);
}

void ButtonWidget::doubleClick() {
  qt::raise(events_.doubleClick);
  if (isKey()) announceCurrentKeys(*this);
}

void ButtonWidget::drawDown(bool down) {
  if (drawnDown_ == down) return;
  drawnDown_ = down;
  update();
}

void ButtonWidget::markDrop(bool on) {
  if (dropMark_ == on) return;
  dropMark_ = on;
  update();
}

void ButtonWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const ButtonColours colours = colours_(state());
  ButtonAppearance look;
  look.back = drawnColour(colours.back, palette());
  look.text = textOn(colours.text, look.back, palette());
  look.scale = scale_;
  look.hovered = hovered_;
  look.pressed = drawnDown_;
  look.focusMark = hasFocus() && showsFocus_;
  look.dropMark = dropMark_;
  paintButton(painter, rect(), look, caption_, palette().color(QPalette::Highlight));
}

void ButtonWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  doublePress_.press(*event);
  pressed_ = true;
  drawDown(true);
}

void ButtonWidget::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_) drawDown(rect().contains(event->position().toPoint()));
}

void ButtonWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  const bool inside = drawnDown_;
  drawDown(false);
  if (inside) raiseClick();
}

// The second press of a double press is no click: `pressed_` stays false, so its release is
// ignored.
void ButtonWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (doublePress_.completes(*event))
    doubleClick();
  else
    mousePressEvent(event);
}

void ButtonWidget::keyPressEvent(QKeyEvent* event) {
  if (isPressKey(*event)) {
    if (event->isAutoRepeat()) return;
    pressed_ = true;
    drawDown(true);
    return;
  }
  ButtonWidget* const next = isKey() ? neighbour(*this, event->key()) : nullptr;
  if (next != nullptr)
    next->setFocus(Qt::TabFocusReason);
  else
    event->ignore();
}

void ButtonWidget::keyReleaseEvent(QKeyEvent* event) {
  if (!isPressKey(*event)) {
    event->ignore();
    return;
  }
  if (event->isAutoRepeat() || !pressed_) return;
  pressed_ = false;
  drawDown(false);
  raiseClick();
}

void ButtonWidget::enterEvent(QEnterEvent*) {
  hovered_ = true;
  update();
  qt::raise(events_.hover);
}

void ButtonWidget::leaveEvent(QEvent*) {
  hovered_ = false;
  update();
}

void ButtonWidget::focusInEvent(QFocusEvent*) {
  update();
  qt::raise(events_.focus);
}

void ButtonWidget::focusOutEvent(QFocusEvent*) {
  pressed_ = false;
  drawnDown_ = false;
  update();
}

void ButtonWidget::dragEnterEvent(QDragEnterEvent* event) {
  markDrop(acceptText(*event));
}

void ButtonWidget::dragMoveEvent(QDragMoveEvent* event) {
  acceptText(*event);
}

void ButtonWidget::dragLeaveEvent(QDragLeaveEvent*) {
  markDrop(false);
}

void ButtonWidget::dropEvent(QDropEvent* event) {
  markDrop(false);
  if (!acceptText(*event)) return;
  // Another program's text can be of any size, so a failure to copy it is handled by `dispatch`
  // too.
  dispatch([&] {
    DroppedData dropped(*event->mimeData());
    std::int32_t effect = event->dropAction() == Qt::MoveAction ? kDropMove : kDropCopy;
    if (!events_.drop) return;
    events_.drop(dropped, effect, buttonCode(event->buttons()), shiftState(event->modifiers()),
                 toTwips(event->position().x(), scale_), toTwips(event->position().y(), scale_));
  });
}

void ButtonWidget::nextCheckState() {
  raiseClick();
}

}  // namespace forms::qt
