#include "platform/forms/qt/WaitPointer.h"

#include <QCursor>
#include <QGuiApplication>
#include <utility>

namespace forms::qt {
namespace {

bool shown = false;

}  // namespace

WaitPointer::WaitPointer() : nested_(startTime().has_value()) {
  hide();
  startTime() = Clock::now();
}

WaitPointer::~WaitPointer() {
  hide();
  startTime() = nested_ ? std::optional(Clock::now()) : std::nullopt;
}

void WaitPointer::showIfLate() {
  constexpr std::chrono::milliseconds kDelay{300};
  if (shown || !startTime() || Clock::now() - *startTime() < kDelay) return;
  shown = true;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

std::optional<WaitPointer::Clock::time_point>& WaitPointer::startTime() {
  static std::optional<Clock::time_point> time;
  return time;
}

void WaitPointer::hide() {
  if (std::exchange(shown, false)) QGuiApplication::restoreOverrideCursor();
}

}  // namespace forms::qt
