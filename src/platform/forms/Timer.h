#pragma once

#include "platform/forms/Container.h"
#include "platform/forms/Event.h"

namespace forms {

/// A timer that starts when its screen is shown. It has no widget.
class Timer {
 public:
  Timer(Container& container, const char* name, int intervalMilliseconds);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  Event<> Tick;
};

}  // namespace forms
