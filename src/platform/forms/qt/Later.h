#pragma once

#include <QTimer>
#include <chrono>
#include <utility>

namespace forms::qt {

/// Calls `act` after a delay, by default once the current events are handled; never if `context`
/// has been destroyed by then. The toolkit's own single-shot call does the same, but the static
/// analysis reports it as a leak.
template <class Act>
void later(QObject& context, Act act, std::chrono::milliseconds delay = {}) {
  auto* const timer = new QTimer(&context);
  timer->setSingleShot(true);
  QObject::connect(timer, &QTimer::timeout, timer, &QTimer::deleteLater);
  QObject::connect(timer, &QTimer::timeout, &context, std::move(act));
  timer->start(delay);
}

}  // namespace forms::qt
