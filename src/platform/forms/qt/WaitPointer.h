#pragma once

#include <chrono>
#include <optional>

namespace forms::qt {

/// Exists while a handler, or a modal loop inside one, runs. After 300 ms `showIfLate` shows the
/// wait pointer. The time in a modal loop doesn't count: when the loop ends, the time of the outer
/// handler starts again from 0.
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
  static std::optional<Clock::time_point>& startTime();
  static void hide();

  bool nested_;
};

}  // namespace forms::qt
