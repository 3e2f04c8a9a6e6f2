#include "platform/forms/Timer.h"

#include <QTimer>

#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Window.h"

namespace forms {

struct Timer::Clock : QTimer {
  Clock(Timer& owner, const char* name, int milliseconds) : timer(owner) {
    setObjectName(QString::fromLatin1(name));
    setInterval(milliseconds);
    setTimerType(Qt::PreciseTimer);
  }

  Timer& timer;

 protected:
  void timerEvent(QTimerEvent*) override { qt::raise(timer.Tick); }
};

Timer::Timer(Container& container, const char* name, int intervalMilliseconds)
    : screen_(container.form()),
      clock_(std::make_unique<Clock>(*this, name, intervalMilliseconds)) {
  screen_.window_->timers.push_back(clock_.get());
}

Timer::~Timer() {
  if (screen_.window_) std::erase(screen_.window_->timers, clock_.get());
}

}  // namespace forms
