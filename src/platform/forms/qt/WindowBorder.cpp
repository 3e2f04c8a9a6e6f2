#include "platform/forms/qt/WindowBorder.h"

#include <QPainter>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"

namespace forms::qt {

WindowBorder::WindowBorder(QWidget* window) : QWidget(window) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setGeometry(window->rect());
  show();
  raise();
}

void WindowBorder::paintEvent(QPaintEvent*) {
  constexpr double kShare = 0.6;
  QPainter painter(this);
  const QColor back = palette().color(QPalette::Window);
  DeviceFrames(painter, rect(), 0)
      .frame(mixed(back, palette().color(QPalette::WindowText), kShare), 1, 0);
}

}  // namespace forms::qt
