#pragma once

#include <QColor>
#include <QPainter>

namespace forms::qt {

/// Draws a rounded area and frames in it on whole device pixels, so that edges are sharp at any
/// scale. The painter comes back as it was.
class DeviceFrames {
 public:
  DeviceFrames(QPainter& painter, const QRect& area, qreal radius);
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
