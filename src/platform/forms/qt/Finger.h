#pragma once

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace forms::qt {

/// Recognises touch gestures on a list from the mouse events that the toolkit synthesises for
/// touches, since its drags need mouse events. A vertical move scrolls, and scrolling continues
/// after the finger lifts; a sideways move or holding still begins a drag; anything else is a tap.
class Finger {
 public:
  /// Called with the event of the press that began the gesture.
  struct Gestures {
    std::function<void(const QMouseEvent&)> drag;
    std::function<void(const QMouseEvent&)> tap;
  };
  Finger(QAbstractScrollArea& list, Gestures gestures);

  static bool isTouch(const QMouseEvent& event) {
    return event.pointerType() == QPointingDevice::PointerType::Finger;
  }

  void press(const QMouseEvent& event);
  void move(const QMouseEvent& event);
  void release(const QMouseEvent& event);
  bool isDragging() const { return gesture_ == Gesture::Drag; }

 private:
  enum class Gesture { None, Undecided, Scroll, Drag };
  void beginDrag();

  QAbstractScrollArea& list_;
  Gestures gestures_;
  QTimer holdTimer_;
  std::unique_ptr<QMouseEvent> press_;
  Gesture gesture_ = Gesture::None;
};

}  // namespace forms::qt
