#pragma once

#include <QColor>
#include <QPainter>

namespace forms::qt {

/// The bounds of an area in device pixels, rounded.
QRect deviceBounds(const QPainter& painter, const QRectF& area);

/// Draws a rounded area and frames in it, aligned to device pixels, so that edges are sharp at any
/// scale. Restores the painter's state.
class DeviceFrames {
 public:
  DeviceFrames(QPainter& painter, const QRectF& area, qreal radius);
  ~DeviceFrames();
  DeviceFrames(const DeviceFrames&) = delete;
  DeviceFrames& operator=(const DeviceFrames&) = delete;

  void fill(const QColor& colour);
  /// A frame of `width` logical pixels, `inset` of them from the edge; at least a device pixel
  /// wide.
  void frame(const QColor& colour, int width, int inset);

 private:
  int devicePixels(int pixels) const;

  QPainter& painter_;
  qreal density_;
  qreal radius_;
  QRect frame_;
};

}  // namespace forms::qt
