#pragma once

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QHash>
#include <QKeyEvent>
#include <QList>
#include <bitset>

namespace forms::qt {

/// The keys of an X display, as its server reports them to this program. The toolkit can't tell the
/// repeat of a held key from a new press: it drops the release for a window that the press has
/// closed, and every event for a window that a modal one blocks.
class XKeyboard : private QAbstractNativeEventFilter {
 public:
  XKeyboard();

  /// False under another display system.
  bool isThere() const { return display_ != nullptr; }
  /// True where the key was down already. To be called once for each press, in their order.
  bool isRepeat(const QKeyEvent& press);

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  void forgetReleased();

  static constexpr std::size_t kKeys = 256;
  Display* display_ = nullptr;
  int (*queryKeymap_)(Display*, char*) = nullptr;
  std::bitset<kKeys> down_;                  ///< by scan code
  QHash<quint32, QList<quint64>> repeated_;  ///< times of each key's repeats, by scan code
};

}  // namespace forms::qt
