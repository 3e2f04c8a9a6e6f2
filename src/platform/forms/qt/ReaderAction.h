#pragma once

#include <QApplication>
#include <QWidget>
#include <utility>

#include "platform/forms/qt/Later.h"

namespace forms::qt {

/// True when a modal screen shuts a widget out.
inline bool isShutOut(const QWidget& widget) {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr && modal != widget.window();
}

/// Carries out what a screen reader asks of a widget once the reader has its answer: the handler
/// may show a modal screen. A widget that is shut out drops it, as it drops a click.
template <class Act>
void actLater(QWidget& widget, Act act) {
  if (isShutOut(widget)) return;
  later(widget, [&widget, act = std::move(act)] {
    if (!isShutOut(widget)) act();
  });
}

}  // namespace forms::qt
