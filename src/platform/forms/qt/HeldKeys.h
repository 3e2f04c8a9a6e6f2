#pragma once

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QKeyEvent>
#include <QObject>

namespace forms::qt {

/// Watches all keys of the keyboard, for an application on which it is installed as event filter.
/// What a held key repeats is marked as a repeat, whatever the display system makes of it. Once a
/// modal window has come or gone, the repeats and the release of a key that was down before reach
/// nothing.
class HeldKeys : public QObject, private QAbstractNativeEventFilter {
 public:
  explicit HeldKeys(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Press {
    int period;
    quint64 last;  ///< when it came or was repeated last, in milliseconds
    bool hasRepeated = false;
  };
  bool filterPress(QObject* window, QKeyEvent& event);
  bool filterRelease(const QKeyEvent& event);
  /// Takes note of each release that the X server reports: the toolkit drops one for a window that
  /// its press has closed.
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  quint64 repeatDelay_;               ///< in milliseconds
  QHash<int, Press> down_;            ///< by key
  QHash<quint32, quint64> released_;  ///< when a key was let go last, by scan code
  int period_ = 0;                    ///< counted up by each modal window that comes or goes
};

}  // namespace forms::qt
