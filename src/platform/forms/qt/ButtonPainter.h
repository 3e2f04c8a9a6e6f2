#pragma once

#include <QPainter>

#include "platform/forms/qt/CaptionLayout.h"

namespace forms::qt {

/// The look of a button in its current state.
struct ButtonAppearance {
  QColor back;
  QColor text;
  double scale = 1;  ///< of the screen's layout
  bool hovered = false;
  bool pressed = false;
  bool focusMark = false;
  bool dropMark = false;
};

/// Paints a button, filled with exactly `look.back`. The flags change only its frame, and
/// `pressed` also moves the caption down by a pixel.
void paintButton(QPainter& painter, const QRect& area, const ButtonAppearance& look,
                 CaptionLayout& caption, const QColor& accent);

}  // namespace forms::qt
