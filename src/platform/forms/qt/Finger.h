#pragma once

#include <QAbstractScrollArea>
#include <QMouseEvent>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace forms::qt {

/// A finger on a list, by the mouse events that the toolkit makes of its touches: its drags follow
/// those alone. A vertical move scrolls, and the list runs on when the finger lifts; a sideways
/// move or holding still begins a drag; what is none of these is a tap.
class Finger {
 public:
  /// Called with the press.
  struct Gestures {
    std::function<void(const QMouseEvent&)> drag;
    std::function<void(const QMouseEvent&)> tap;
  };
  Finger(QAbstractScrollArea& list, Gestures gestures);

  static bool made(const QMouseEvent& event) {
    return event.pointerType() == QPointingDevice::PointerType::Finger;
  }

  void press(const QMouseEvent& event);
  void move(const QMouseEvent& event);
  void release(const QMouseEvent& event);
  bool drags() const { return meaning_ == Meaning::Drag; }

 private:
  enum class Meaning { None, Open, Scroll, Drag };
  void beginDrag();

  QAbstractScrollArea& list_;
  Gestures gestures_;
  QTimer held_;
  std::unique_ptr<QMouseEvent> press_;
  Meaning meaning_ = Meaning::None;
};

}  // namespace forms::qt
