#include "platform/forms/Timer.h"

#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Window.h"

namespace forms {

Timer::Timer(Container& container, const char* name, int intervalMilliseconds) {
  container.window().addTimer(name, intervalMilliseconds, [this] { qt::raise(Tick); });
}

}  // namespace forms
