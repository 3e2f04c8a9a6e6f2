#include "platform/forms/qt/HeldKeys.h"

#include <QCoreApplication>

namespace forms::qt {

HeldKeys::HeldKeys(QObject* application) : QObject(application) {
  application->installEventFilter(this);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWindowType()) return false;
  switch (event->type()) {
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
      ++period_;
      return false;
    case QEvent::KeyPress:
      return filterPress(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      return filterRelease(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

bool HeldKeys::isRepeat(const QKeyEvent& press) {
  const bool repeated =
      keyboard_.isAvailable() ? keyboard_.isRepeat(press) : down_.contains(press.key());
  return repeated || press.isAutoRepeat();
}

bool HeldKeys::filterPress(QObject* window, QKeyEvent& event) {
  if (!isRepeat(event)) {
    down_.insert(event.key(), period_);
    return false;
  }
  // A key without an entry was first pressed in a window that a modal one blocked.
  if (down_.value(event.key(), -1) != period_) return true;
  if (event.isAutoRepeat()) return false;
  QKeyEvent repeat(QEvent::KeyPress, event.key(), event.modifiers(), event.nativeScanCode(),
                   event.nativeVirtualKey(), event.nativeModifiers(), event.text(), true,
                   static_cast<quint16>(event.count()));
  repeat.setTimestamp(event.timestamp());
  QCoreApplication::sendEvent(window, &repeat);
  event.setAccepted(repeat.isAccepted());
  return true;
}

bool HeldKeys::filterRelease(const QKeyEvent& event) {
  const auto press = down_.constFind(event.key());
  if (press == down_.constEnd()) return false;
  const bool isOld = *press != period_;
  if (!event.isAutoRepeat()) down_.erase(press);
  return isOld;
}

}  // namespace forms::qt
