#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QObject>

#include "platform/forms/qt/XKeyboard.h"

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
  bool isRepeat(const QKeyEvent& press);
  bool filterPress(QObject* window, QKeyEvent& event);
  bool filterRelease(const QKeyEvent& event);

  XKeyboard keyboard_;
  QHash<int, int> down_;  ///< by key: the period in which it was pressed
  int period_ = 0;        ///< counted up by each modal window that comes or goes
};

}  // namespace forms::qt
