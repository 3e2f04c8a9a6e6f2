#pragma once

#include <chrono>
#include <optional>

namespace forms::qt {

/// One run of a handler, or of a modal loop inside of one: while it lasts, `showIfLate` shows the
/// wait pointer once the user has waited for it for 300 ms. What the user does in a modal loop is
/// no waiting, so the handler around it begins anew when the loop has ended.
class WaitPointer {
 public:
  WaitPointer();
  ~WaitPointer();
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;

  /// To be called again and again while a handler works.
  static void showIfLate();

 private:
  using Clock = std::chrono::steady_clock;
  static std::optional<Clock::time_point>& began();
  static void hide();

  bool nested_;
};

}  // namespace forms::qt
