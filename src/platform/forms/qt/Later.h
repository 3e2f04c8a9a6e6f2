#pragma once

#include <QTimer>
#include <chrono>
#include <utility>

namespace forms::qt {

/// Calls `act` after a delay (default: after the pending events), unless `context` has been
/// destroyed by then. Does the same as `QTimer::singleShot`, which static analysis reports as a
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
