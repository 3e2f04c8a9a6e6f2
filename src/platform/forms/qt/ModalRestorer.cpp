#include "platform/forms/qt/ModalRestorer.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace forms::qt {

ModalRestorer::ModalRestorer(QObject* application) : QObject(application) {
  application->installEventFilter(this);
}

bool ModalRestorer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::WindowStateChange || !watched->isWidgetType()) return false;
  auto* const window = static_cast<QWidget*>(watched);
  if (!window->isModal() || !window->isMinimized()) return false;
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  // Some window managers don't return the keyboard to a window that shows again.
  window->windowHandle()->requestActivate();
  return false;
}

}  // namespace forms::qt
