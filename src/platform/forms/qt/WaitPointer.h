#pragma once

#include <chrono>
#include <optional>

namespace forms::qt {

/// One run of a handler, or of a modal loop inside of one. During the run `showIfLate` shows the
/// wait pointer once the user has waited for 300 ms. Time in a modal loop doesn't count as waiting:
/// the count for the outer handler starts again when the loop has ended.
class WaitPointer {
 public:
  WaitPointer();
  ~WaitPointer();
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;

  /// To be called repeatedly while a handler runs.
  static void showIfLate();

 private:
  using Clock = std::chrono::steady_clock;
  static std::optional<Clock::time_point>& began();
  static void hide();

  bool nested_;
};

}  // namespace forms::qt
