#pragma once

#include <QPointF>
#include <QRect>

#include "platform/forms/Measures.h"

namespace forms::qt {

/// Twips to the toolkit's logical pixels on a screen that is laid out at `scale`.
inline int toPixels(Twips length, double scale) {
  return qRound(length.value * scale / kTwipsPerPixel);
}

inline QPoint toPixels(const Offset& offset, double scale) {
  return {toPixels(offset.left, scale), toPixels(offset.top, scale)};
}

/// Edges are rounded, not sizes, so that gaps between like controls stay even at any scale.
inline QRect toPixels(const Bounds& bounds, double scale) {
  const QPoint from(toPixels(bounds.left, scale), toPixels(bounds.top, scale));
  const QPoint to(toPixels(bounds.left.value + bounds.width.value, scale),
                  toPixels(bounds.top.value + bounds.height.value, scale));
  return {from, QSize(to.x() - from.x(), to.y() - from.y())};
}

inline float toTwips(qreal pixels, double scale) {
  return static_cast<float>(pixels * kTwipsPerPixel / scale);
}

}  // namespace forms::qt
