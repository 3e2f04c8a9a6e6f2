#include "platform/forms/qt/DeviceFrames.h"

#include <QtMath>

namespace forms::qt {

QRect deviceBounds(const QPainter& painter, const QRectF& area) {
  const QRectF exact = painter.deviceTransform().mapRect(area);
  return {QPoint(qRound(exact.left()), qRound(exact.top())),
          QPoint(qRound(exact.right()) - 1, qRound(exact.bottom()) - 1)};
}

DeviceFrames::DeviceFrames(QPainter& painter, const QRectF& area, qreal radius)
    : painter_(painter),
      density_(painter.deviceTransform().m11()),
      radius_(radius * density_),
      frame_(deviceBounds(painter, area)) {
  painter_.save();
  painter_.setTransform(painter.deviceTransform().inverted(), true);
  painter_.setRenderHint(QPainter::Antialiasing);
}

DeviceFrames::~DeviceFrames() {
  painter_.restore();
}

void DeviceFrames::fill(const QColor& colour) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(colour);
  painter_.drawRoundedRect(frame_, radius_, radius_);
}

void DeviceFrames::frame(const QColor& colour, int width, int inset) {
  const int line = devicePixels(width);
  const qreal middle = devicePixels(inset) + line / 2.0;
  const QRectF path = QRectF(frame_).adjusted(middle, middle, -middle, -middle);
  const qreal radius = qMax<qreal>(radius_ - middle, 0.5);
  painter_.setPen(QPen(colour, line));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRoundedRect(path, radius, radius);
}

int DeviceFrames::devicePixels(int pixels) const {
  return pixels == 0 ? 0 : qMax(1, qFloor(pixels * density_));
}

}  // namespace forms::qt
