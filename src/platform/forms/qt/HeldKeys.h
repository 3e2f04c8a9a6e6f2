#pragma once

#include <QHash>
#include <QKeyEvent>
#include <QObject>

#include "platform/forms/qt/XKeyboard.h"

namespace forms::qt {

/// An application event filter for keyboard keys. Marks auto-repeats as such even when the display
/// system reports them as separate presses. After a modal window opens or closes, drops the repeats
/// and the release of every key that was already down.
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
  int period_ = 0;        ///< incremented when a modal window opens or closes
};

}  // namespace forms::qt
