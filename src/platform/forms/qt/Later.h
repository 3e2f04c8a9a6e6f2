#pragma once

#include <QTimer>
#include <chrono>
#include <utility>

namespace forms::qt {

/// Calls `act` after a time, or once the events under way are done; never where `context` has gone
/// by then. The toolkit's own single shot does the same, but the static analysis takes it for a
/// leak.
template <class Act>
void later(QObject& context, Act act, std::chrono::milliseconds delay = {}) {
  auto* const timer = new QTimer(&context);
  timer->setSingleShot(true);
  QObject::connect(timer, &QTimer::timeout, timer, &QTimer::deleteLater);
  QObject::connect(timer, &QTimer::timeout, &context, std::move(act));
  timer->start(delay);
}

}  // namespace forms::qt
