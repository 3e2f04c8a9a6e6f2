#pragma once

#include <QPainter>

#include "platform/forms/qt/CaptionLayout.h"

namespace forms::qt {

/// How a button stands at the moment.
struct KeyLook {
  QColor back;
  QColor text;
  double scale = 1;  ///< of the screen's layout
  bool hovered = false;
  bool pressed = false;
  bool focusMark = false;
  bool dropMark = false;
};

/// Paints a button. The stored colour fills it and stays as it is; states show at the edge alone.
void paintKey(QPainter& painter, const QRect& area, const KeyLook& look, CaptionLayout& caption,
              const QColor& accent);

}  // namespace forms::qt
