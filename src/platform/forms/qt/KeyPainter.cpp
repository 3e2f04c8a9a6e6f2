#include "platform/forms/qt/KeyPainter.h"

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"

namespace forms::qt {
namespace {

constexpr double kSideMargin = 4;
constexpr double kTopMargin = 2;
constexpr qreal kRadius = 3;

}  // namespace

void paintKey(QPainter& painter, const QRect& area, const KeyLook& look, CaptionLayout& caption,
              const QColor& accent) {
  const QColor mark = markOn(look.back);
  {
    DeviceFrames frames(painter, area, kRadius);
    frames.fill(look.back);
    if (look.pressed) {
      frames.frame(mixed(look.back, mark, 0.18), 3, 0);
      frames.frame(mixed(look.back, mark, 0.55), 1, 0);
    } else {
      frames.frame(mixed(look.back, mark, look.hovered ? 0.5 : 0.25), 1, 0);
      if (look.hovered) frames.frame(mixed(look.back, mark, 0.12), 1, 1);
    }
    if (look.focusMark) {
      frames.frame(accent, 2, 0);
      frames.frame(mark, 1, 2);
    }
  }
  const int side = qRound(kSideMargin * look.scale);
  const int top = qRound(kTopMargin * look.scale);
  QRect room = area.adjusted(side, top, -side, -top);
  if (look.pressed) room.translate(0, 1);
  painter.setPen(look.text);
  caption.paint(painter, room, (side + 1) / 2);
  // Over the caption, which may reach under it.
  if (look.dropMark) {
    DeviceFrames frames(painter, area, kRadius);
    frames.frame(accent, 4, 0);
    frames.frame(mark, 2, 4);
  }
}

}  // namespace forms::qt
