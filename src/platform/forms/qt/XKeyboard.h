#pragma once

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QHash>
#include <QKeyEvent>
#include <QList>
#include <bitset>
#include <cstdint>

namespace forms::qt {

/// Tracks key presses from the X server's own events. The toolkit can't distinguish a repeat from a
/// new press: it drops the release if the press closed its window, and all events of a window that
/// a modal one blocks.
class XKeyboard : private QAbstractNativeEventFilter {
 public:
  XKeyboard();

  /// False under another display system.
  bool isAvailable() const { return display_ != nullptr; }
  /// True if the key was already down. Must be called exactly once for each press, in order.
  bool isRepeat(const QKeyEvent& press);

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  void askForReleased();
  bool isAfterQuery(std::uint32_t request) const;

  static constexpr std::size_t kKeys = 256;
  Display* display_ = nullptr;
  int (*queryKeymap_)(Display*, char*) = nullptr;
  unsigned long (*lastRequest_)(Display*) = nullptr;
  std::bitset<kKeys> down_;                  ///< by scan code, as of the last event
  std::bitset<kKeys> up_;                    ///< by scan code, at the last query; not pressed since
  std::bitset<kKeys> lastRepeats_;           ///< by scan code: the last press was a repeat
  std::uint32_t query_ = 0;                  ///< number of the last query's request
  QHash<quint32, QList<quint64>> repeated_;  ///< times of each key's repeats, by scan code
};

}  // namespace forms::qt
