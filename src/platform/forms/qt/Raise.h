#pragma once

#include <Qt>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/forms/Event.h"
#include "platform/forms/qt/WaitPointer.h"
#include "platform/process/Process.h"

namespace forms::qt {

/// Runs the handler of an action of the user through the dispatcher. Called inside the override of
/// the toolkit's event, so that no exception reaches a frame of the toolkit.
inline void dispatch(const std::function<void()>& handler) {
  const WaitPointer wait;
  process::dispatch(handler);
}

/// Raises an event for an action of the user.
template <class... Arguments, class... Values>
void raise(const Event<Arguments...>& event, Values&&... values) {
  if (event) dispatch([&] { event(std::forward<Values>(values)...); });
}

/// Registers `exitLoop` for the lifetime of a modal loop: it is called when the program ends under
/// a test's host, which doesn't end the process.
class EndRegistration {
 public:
  explicit EndRegistration(std::function<void()> exitLoop)
      : unregister_(process::onEnd(std::move(exitLoop))) {}
  ~EndRegistration() { unregister_(); }
  EndRegistration(const EndRegistration&) = delete;
  EndRegistration& operator=(const EndRegistration&) = delete;

 private:
  WaitPointer wait_;  ///< keeps the time in the loop from counting as the handler's
  std::function<void()> unregister_;
};

/// A mouse button as the screens know it: 1 left, 2 right, 4 middle.
inline std::int16_t buttonCode(Qt::MouseButtons buttons) {
  return static_cast<std::int16_t>((buttons & Qt::LeftButton ? 1 : 0) |
                                   (buttons & Qt::RightButton ? 2 : 0) |
                                   (buttons & Qt::MiddleButton ? 4 : 0));
}

/// The modifier keys as the screens know them: 1 Shift, 2 Control, 4 Alt.
inline std::int16_t shiftState(Qt::KeyboardModifiers keys) {
  return static_cast<std::int16_t>((keys & Qt::ShiftModifier ? 1 : 0) |
                                   (keys & Qt::ControlModifier ? 2 : 0) |
                                   (keys & Qt::AltModifier ? 4 : 0));
}

}  // namespace forms::qt
