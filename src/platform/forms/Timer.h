#pragma once

#include <memory>

#include "platform/forms/Control.h"

namespace forms {

/// A timer that runs from the moment its screen is shown; it isn't seen.
class Timer {
 public:
  Timer(Container& container, const char* name, int intervalMilliseconds);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  Event<> Tick;

 private:
  Form& screen_;
  struct Clock;
  std::unique_ptr<Clock> clock_;
};

}  // namespace forms
