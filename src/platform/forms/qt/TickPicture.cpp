#include "platform/forms/qt/TickPicture.h"

#include <QPainter>

#include "platform/forms/qt/Pictures.h"

namespace forms::qt {

TickPicture::TickPicture(QWidget* parent) : QLabel(parent) {
  setAccessibleName(QStringLiteral("Tick"));
}

void TickPicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintTick(painter, rect());
}

}  // namespace forms::qt
