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

/// Lays out the lines that have room, and the one behind them: a caption may be very long.
void CaptionLayout::layOut(int width) {
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
  while (layout_.lineCount() == 0 || height <= size_.height()) {
    QTextLine line = layout_.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    line.setPosition({0, height});
    height += line.height();
  }
  layout_.endLayout();
}

/// True when a line ends within a word.
bool CaptionLayout::breaksWord() const {
  const QString& text = layout_.text();
  for (int i = 1; i < layout_.lineCount(); ++i)
    if (!text[layout_.lineAt(i).textStart() - 1].isSpace()) return true;
  return false;
}

void CaptionLayout::paint(QPainter& painter, QRect area, int reserve) {
  if (caption_.isEmpty()) return;
  if (size_ != area.size()) {
    size_ = area.size();
    reserve_ = 0;
    layOut(size_.width());
    if (breaksWord()) {
      layOut(size_.width() + 2 * reserve);
      if (breaksWord())
        layOut(size_.width());
      else
        reserve_ = reserve;
    }
  }
  area.adjust(-reserve_, 0, reserve_, 0);
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
