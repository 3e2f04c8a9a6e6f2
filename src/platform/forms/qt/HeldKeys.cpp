#include "platform/forms/qt/HeldKeys.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLibrary>
#include <cstdint>
#include <cstring>

namespace forms::qt {
namespace {

/// Asks the X server not to make up a release before each repeat, since the toolkit tells those
/// from real ones only if the next press has arrived by then. Returns after how many milliseconds a
/// held key begins to repeat, 0 where nobody says.
quint64 askForRealReleases() {
  const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr || x11->display() == nullptr) return 0;
  using SetDetectableAutoRepeat = int (*)(Display*, int, int*);
  using GetAutoRepeatRate = int (*)(Display*, unsigned, unsigned*, unsigned*);
  constexpr unsigned kCoreKeyboard = 0x100;
  QLibrary library(QStringLiteral("X11"), 6);
  const auto setDetectable =
      reinterpret_cast<SetDetectableAutoRepeat>(library.resolve("XkbSetDetectableAutoRepeat"));
  if (setDetectable != nullptr) setDetectable(x11->display(), 1, nullptr);
  const auto getRate = reinterpret_cast<GetAutoRepeatRate>(library.resolve("XkbGetAutoRepeatRate"));
  unsigned delay = 0;
  unsigned interval = 0;
  const bool known =
      getRate != nullptr && getRate(x11->display(), kCoreKeyboard, &delay, &interval) != 0;
  return known ? delay : 0;
}

}  // namespace

HeldKeys::HeldKeys(QObject* application)
    : QObject(application), repeatDelay_(askForRealReleases()) {
  application->installEventFilter(this);
  QCoreApplication::instance()->installNativeEventFilter(this);
}

bool HeldKeys::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  // The head of a key event of the X protocol: its code in the lowest seven bits of the first byte,
  // the key's scan code, and after two more bytes the server's time in milliseconds.
  constexpr unsigned kKeyRelease = 3;
  constexpr unsigned kCodeBits = 0x7F;
  constexpr std::size_t kTimeOffset = 4;
  if (type != "xcb_generic_event_t") return false;
  const auto* const bytes = static_cast<const unsigned char*>(message);
  if ((bytes[0] & kCodeBits) != kKeyRelease) return false;
  std::uint32_t time = 0;
  std::memcpy(&time, bytes + kTimeOffset, sizeof time);
  released_.insert(bytes[1], time);
  return false;
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

bool HeldKeys::filterPress(QObject* window, QKeyEvent& event) {
  // A held key repeats sooner than this; one that hasn't was let go over another program.
  constexpr quint64 kStillHeld = 1000;
  const auto press = down_.find(event.key());
  const auto release = released_.constFind(event.nativeScanCode());
  const auto isStillDown = [&] {
    if (press == down_.end()) return false;
    const quint64 since = event.timestamp() - press->last;
    // The release may have been reported to nobody, while no window had the keyboard.
    if (!press->hasRepeated && since < repeatDelay_) return false;
    return since <= kStillHeld && (release == released_.constEnd() || *release < press->last);
  };
  const bool wasDown = isStillDown();
  if (!event.isAutoRepeat() && !wasDown) {
    down_.insert(event.key(), {.period = period_, .last = event.timestamp()});
    return false;
  }
  if (press != down_.end()) {
    press->last = event.timestamp();
    press->hasRepeated = true;
  }
  if (press == down_.end() || press->period != period_) return true;
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
  const bool isOld = press->period != period_;
  if (!event.isAutoRepeat()) down_.erase(press);
  return isOld;
}

}  // namespace forms::qt
