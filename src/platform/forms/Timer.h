#pragma once

#include "platform/forms/Container.h"
#include "platform/forms/Event.h"

namespace forms {

/// A timer that runs from the moment its screen is shown; it isn't seen.
class Timer {
 public:
  Timer(Container& container, const char* name, int intervalMilliseconds);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  Event<> Tick;
};

}  // namespace forms
