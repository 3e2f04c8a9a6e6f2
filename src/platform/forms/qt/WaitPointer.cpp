#include "platform/forms/qt/WaitPointer.h"

#include <QCursor>
#include <QGuiApplication>
#include <utility>

namespace forms::qt {
namespace {

bool shown = false;

}  // namespace

WaitPointer::WaitPointer() : nested_(began().has_value()) {
  hide();
  began() = Clock::now();
}

WaitPointer::~WaitPointer() {
  hide();
  began() = nested_ ? std::optional(Clock::now()) : std::nullopt;
}

void WaitPointer::showIfLate() {
  constexpr std::chrono::milliseconds kPatience{300};
  if (shown || !began() || Clock::now() - *began() < kPatience) return;
  shown = true;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

std::optional<WaitPointer::Clock::time_point>& WaitPointer::began() {
  static std::optional<Clock::time_point> time;
  return time;
}

void WaitPointer::hide() {
  if (std::exchange(shown, false)) QGuiApplication::restoreOverrideCursor();
}

}  // namespace forms::qt
