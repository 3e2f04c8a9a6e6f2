#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <utility>

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
  const auto unlessShutOut = [&widget, act = std::move(act)] {
    if (!isShutOut(widget)) act();
  };
  auto* const soon = new QTimer(&widget);
  soon->setSingleShot(true);
  QObject::connect(soon, &QTimer::timeout, soon, &QTimer::deleteLater);
  QObject::connect(soon, &QTimer::timeout, &widget, unlessShutOut);
  soon->start();
}

}  // namespace forms::qt
