#include "platform/forms/qt/Finger.h"

#include <QApplication>
#include <QScroller>
#include <cstdlib>
#include <utility>

namespace forms::qt {
namespace {

constexpr int kHeldStill = 500;  // milliseconds

qint64 timeOf(const QMouseEvent& event) {
  return static_cast<qint64>(event.timestamp());
}

}  // namespace

Finger::Finger(QAbstractScrollArea& list, Gestures gestures)
    : list_(list), gestures_(std::move(gestures)) {
  holdTimer_.setSingleShot(true);
  holdTimer_.setInterval(kHeldStill);
  holdTimer_.callOnTimeout([this] { beginDrag(); });

  QScroller* const scroller = QScroller::scroller(&list_);
  QScrollerProperties properties = scroller->scrollerProperties();
  properties.setScrollMetric(QScrollerProperties::VerticalOvershootPolicy,
                             QScrollerProperties::OvershootAlwaysOff);
  // The scroller gets its first move only after the finger has moved far enough, so its own
  // threshold is almost zero.
  properties.setScrollMetric(QScrollerProperties::DragStartDistance, 0.0005);  // metres
  scroller->setScrollerProperties(properties);
}

void Finger::press(const QMouseEvent& event) {
  QScroller* const scroller = QScroller::scroller(&list_);
  // A touch that stops the scrolling of a list is no tap.
  const bool stops = scroller->state() == QScroller::Scrolling;
  scroller->handleInput(QScroller::InputPress, event.position(), timeOf(event));
  press_.reset(event.clone());
  gesture_ = stops ? Gesture::Scroll : Gesture::Undecided;
  if (!stops) holdTimer_.start();
}

void Finger::move(const QMouseEvent& event) {
  if (gesture_ == Gesture::Undecided) {
    const QPointF moved = event.position() - press_->position();
    if (moved.manhattanLength() < QApplication::startDragDistance()) return;
    if (std::abs(moved.x()) > std::abs(moved.y())) {
      beginDrag();
      return;
    }
    holdTimer_.stop();
    gesture_ = Gesture::Scroll;
  }
  if (gesture_ == Gesture::Scroll)
    QScroller::scroller(&list_)->handleInput(QScroller::InputMove, event.position(), timeOf(event));
}

void Finger::release(const QMouseEvent& event) {
  holdTimer_.stop();
  const Gesture ended = std::exchange(gesture_, Gesture::None);
  if (ended == Gesture::None) return;
  QScroller::scroller(&list_)->handleInput(QScroller::InputRelease, event.position(),
                                           timeOf(event));
  if (ended == Gesture::Undecided) gestures_.tap(*press_);
}

void Finger::beginDrag() {
  holdTimer_.stop();
  QScroller::scroller(&list_)->stop();
  gesture_ = Gesture::Drag;
  gestures_.drag(*press_);
  gesture_ = Gesture::None;
}

}  // namespace forms::qt
