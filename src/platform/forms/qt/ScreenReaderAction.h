#pragma once

#include <QApplication>
#include <QWidget>
#include <utility>

#include "platform/forms/qt/Later.h"

namespace forms::qt {

/// True when a modal screen blocks a widget.
inline bool isBlocked(const QWidget& widget) {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != widget.window();
}

/// Performs a screen reader's action on a widget after the call from the reader has returned, since
/// the handler may show a modal screen. A blocked widget ignores the action, as it ignores a click.
template <class Act>
void actLater(QWidget& widget, Act act) {
  if (isBlocked(widget)) return;
  later(widget, [&widget, act = std::move(act)] {
    if (!isBlocked(widget)) act();
  });
}

}  // namespace forms::qt
