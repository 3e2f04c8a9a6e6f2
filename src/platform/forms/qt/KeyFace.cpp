#include "platform/forms/qt/KeyFace.h"

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
bool take(QDropEvent& event) {
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

KeyFace::KeyFace(QWidget* parent, const KeyEvents& events,
                 std::function<KeyColours(KeyState)> colours)
    : QAbstractButton(parent), events_(events), colours_(std::move(colours)) {
  setFocusPolicy(Qt::StrongFocus);
}

void KeyFace::setKeyNumber(int number) {
  keyName_ = "Key " + QString::number(number);
}

void KeyFace::setCaption(const QString& text) {
  caption_.set(text);
  setAccessibleName(text.isEmpty() ? keyName_ : text);
  update();
}

void KeyFace::setTextFont(const QFont& font) {
  caption_.set(font);
  update();
}

KeyState KeyFace::state() const {
  if (held_) return KeyState::Down;
  if (hovered_) return KeyState::Over;
  return hasFocus() ? KeyState::Focus : KeyState::Rest;
}

QColor KeyFace::restColour() const {
  return drawnColour(colours_(KeyState::Rest).back, palette());
}

void KeyFace::tellCurrent() {
  const bool current = isCurrent();
  if (std::exchange(toldCurrent_, current) == current) return;
  QAccessible::State changed;
  changed.selected = true;
  QAccessibleStateChangeEvent event(this, changed);
  QAccessible::updateAccessibility(&event);
}

void KeyFace::raiseClick() {
  qt::raise(events_.click);
  if (isKey()) tellCurrentKeys(*this);
}

void KeyFace::doubleClick() {
  qt::raise(events_.doubleClick);
  if (isKey()) tellCurrentKeys(*this);
}

void KeyFace::hold(bool down) {
  if (held_ == down) return;
  held_ = down;
  update();
}

void KeyFace::markDrop(bool on) {
  if (dropMark_ == on) return;
  dropMark_ = on;
  update();
}

void KeyFace::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const KeyColours colours = colours_(state());
  KeyLook look;
  look.back = drawnColour(colours.back, palette());
  look.text = textOn(colours.text, look.back, palette());
  look.scale = scale_;
  look.hovered = hovered_;
  look.pressed = held_;
  look.focusMark = hasFocus() && showsFocus_;
  look.dropMark = dropMark_;
  paintKey(painter, rect(), look, caption_, palette().color(QPalette::Highlight));
}

void KeyFace::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  doublePress_.press(*event);
  pressed_ = true;
  hold(true);
}

void KeyFace::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_) hold(rect().contains(event->position().toPoint()));
}

void KeyFace::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  const bool inside = held_;
  hold(false);
  if (inside) raiseClick();
}

// The second press of a double press is no click: `pressed_` stays false, so its release is
// ignored.
void KeyFace::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (doublePress_.completes(*event))
    doubleClick();
  else
    mousePressEvent(event);
}

void KeyFace::keyPressEvent(QKeyEvent* event) {
  if (isPressKey(*event)) {
    if (event->isAutoRepeat()) return;
    pressed_ = true;
    hold(true);
    return;
  }
  KeyFace* const next = isKey() ? neighbour(*this, event->key()) : nullptr;
  if (next != nullptr)
    next->setFocus(Qt::TabFocusReason);
  else
    event->ignore();
}

void KeyFace::keyReleaseEvent(QKeyEvent* event) {
  if (!isPressKey(*event)) {
    event->ignore();
    return;
  }
  if (event->isAutoRepeat() || !pressed_) return;
  pressed_ = false;
  hold(false);
  raiseClick();
}

void KeyFace::enterEvent(QEnterEvent*) {
  hovered_ = true;
  update();
  qt::raise(events_.pointer);
}

void KeyFace::leaveEvent(QEvent*) {
  hovered_ = false;
  update();
}

void KeyFace::focusInEvent(QFocusEvent*) {
  update();
  qt::raise(events_.focus);
}

void KeyFace::focusOutEvent(QFocusEvent*) {
  pressed_ = false;
  held_ = false;
  update();
}

void KeyFace::dragEnterEvent(QDragEnterEvent* event) {
  markDrop(take(*event));
}

void KeyFace::dragMoveEvent(QDragMoveEvent* event) {
  take(*event);
}

void KeyFace::dragLeaveEvent(QDragLeaveEvent*) {
  markDrop(false);
}

void KeyFace::dropEvent(QDropEvent* event) {
  markDrop(false);
  if (!take(*event)) return;
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

void KeyFace::nextCheckState() {
  raiseClick();
}

}  // namespace forms::qt
