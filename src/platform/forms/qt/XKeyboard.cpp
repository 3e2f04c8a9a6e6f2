#include "platform/forms/qt/XKeyboard.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/forms/qt/LibraryFunction.h"

namespace forms::qt {
namespace {

/// Codes of the X protocol's events, in the lowest seven bits of an event's first byte.
constexpr unsigned kCodeBits = 0x7F;
enum : unsigned { kKeyPress = 2, kKeyRelease = 3, kFocusIn = 9 };

std::uint32_t numberAt(const unsigned char* bytes) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

}  // namespace

XKeyboard::XKeyboard() {
  const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr || x11->display() == nullptr) return;
  queryKeymap_ = libraryFunction<int(Display*, char*)>("X11", 6, "XQueryKeymap");
  lastRequest_ = libraryFunction<unsigned long(Display*)>("X11", 6, "XLastKnownRequestProcessed");
  auto* const setDetectable =
      libraryFunction<int(Display*, int, int*)>("X11", 6, "XkbSetDetectableAutoRepeat");
  if (queryKeymap_ == nullptr || lastRequest_ == nullptr || setDetectable == nullptr) return;
  display_ = x11->display();
  // Without this the server sends a release before each repeat.
  setDetectable(display_, 1, nullptr);
  QCoreApplication::instance()->installNativeEventFilter(this);
}

bool XKeyboard::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  // Layout of a key event: byte 0 the event code, byte 1 the scan code, bytes 4 to 7 the server's
  // time in milliseconds.
  constexpr std::size_t kTimeOffset = 4;
  // The toolkit's connection appends the number of the last request that the server had processed.
  constexpr std::size_t kRequestOffset = 32;
  if (type != "xcb_generic_event_t") return false;
  const auto* const bytes = static_cast<const unsigned char*>(message);
  const unsigned key = bytes[1];
  switch (bytes[0] & kCodeBits) {
    case kKeyPress:
      if (up_.test(key) && isAfterQuery(numberAt(bytes + kRequestOffset))) down_.reset(key);
      up_.reset(key);
      if (down_.test(key)) repeated_[key].append(numberAt(bytes + kTimeOffset));
      lastRepeats_[key] = down_.test(key);
      down_.set(key);
      break;
    case kKeyRelease:
      down_.reset(key);
      break;
    case kFocusIn:
      askForReleased();
      break;
    default:
      break;
  }
  return false;
}

/// The server doesn't report releases to this program while none of its windows has the keyboard.
/// The answer doesn't apply to events that the server sent before it and that are still waiting.
void XKeyboard::askForReleased() {
  std::array<char, kKeys / 8> bits{};
  queryKeymap_(display_, bits.data());
  query_ = static_cast<std::uint32_t>(lastRequest_(display_));
  for (std::size_t key = 0; key < kKeys; ++key) up_[key] = (bits[key / 8] >> (key % 8) & 1) == 0;
}

bool XKeyboard::isAfterQuery(std::uint32_t request) const {
  return static_cast<std::int32_t>(request - query_) >= 0;
}

bool XKeyboard::isRepeat(const QKeyEvent& press) {
  // While a screen reader listens, the toolkit passes its keys on later and without their times.
  if (press.timestamp() == 0) return lastRepeats_.test(press.nativeScanCode() % kKeys);
  const auto repeated = repeated_.find(press.nativeScanCode());
  if (repeated == repeated_.end()) return false;
  // Older entries are presses that the toolkit dropped for a blocked window: remove them too. Newer
  // entries stay, since the server's events arrive ahead of the toolkit's.
  const auto later = std::ranges::upper_bound(*repeated, press.timestamp());
  const bool found = later != repeated->begin() && *std::prev(later) == press.timestamp();
  repeated->erase(repeated->begin(), later);
  return found;
}

}  // namespace forms::qt
