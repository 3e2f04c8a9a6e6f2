#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QObject>

namespace forms::qt {

/// Watches all keys of the keyboard, for an application on which it is installed as event filter.
/// What a held key repeats is marked as a repeat, whatever the display system makes of it. Once a
/// modal window has come or gone, the repeats and the release of a key that was down before reach
/// nothing.
class HeldKeys : public QObject {
 public:
  explicit HeldKeys(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Press {
    int period;
    quint64 last;  ///< when it came or was repeated last, in milliseconds
  };
  bool filterPress(QObject* window, QKeyEvent& event);
  bool filterRelease(const QKeyEvent& event);

  QHash<int, Press> down_;  ///< by key
  int period_ = 0;          ///< counted up by each modal window that comes or goes
};

}  // namespace forms::qt
