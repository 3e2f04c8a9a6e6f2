#include "platform/forms/qt/KeyPainter.h"

#include <QtMath>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"

namespace forms::qt {
namespace {

constexpr double kSideMargin = 4;
constexpr double kTopMargin = 2;
constexpr qreal kRadius = 3;

}  // namespace

void CaptionLayout::layOut(int width) {
  width_ = width;
  QString text = caption_;
  text.replace("\r\n", QString(QChar::LineSeparator));
  text.replace('\r', QChar::LineSeparator);
  text.replace('\n', QChar::LineSeparator);
  QTextOption option(Qt::AlignHCenter);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout_.setText(text);
  layout_.setFont(font_);
  layout_.setTextOption(option);
  layout_.setCacheEnabled(true);
  layout_.beginLayout();
  qreal height = 0;
  for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, height});
    height += line.height();
  }
  layout_.endLayout();
}

void CaptionLayout::paint(QPainter& painter, const QRect& area) {
  if (caption_.isEmpty()) return;
  if (width_ != area.width()) layOut(area.width());
  // A last line that has no whole room is left out; the first one always shows.
  qreal height = 0;
  int lines = 0;
  while (lines < layout_.lineCount()) {
    const qreal next = height + layout_.lineAt(lines).height();
    if (lines > 0 && next > area.height()) break;
    height = next;
    ++lines;
  }
  const QPointF at(area.x(), area.y() + qFloor((area.height() - height) / 2));
  for (int i = 0; i < lines; ++i) layout_.lineAt(i).draw(&painter, at);
}

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
    if (look.dropMark) {
      frames.frame(markOn(accent), 5, 0);
      frames.frame(accent, 4, 0);
      frames.frame(mark, 2, 5);
    }
  }
  const int side = qRound(kSideMargin * look.scale);
  const int top = qRound(kTopMargin * look.scale);
  QRect room = area.adjusted(side, top, -side, -top);
  if (look.pressed) room.translate(0, 1);
  painter.setPen(look.text);
  caption.paint(painter, room);
}

}  // namespace forms::qt
