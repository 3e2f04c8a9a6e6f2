#include "platform/forms/qt/Pictures.h"

#include <QFontMetrics>
#include <QPainterPath>
#include <QPalette>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"

namespace forms::qt {
namespace {

void paintLine(QPainter& painter, const QPainterPath& line, const QColor& colour, qreal width) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(line);
  painter.restore();
}

}  // namespace

void paintTick(QPainter& painter, const QRectF& area) {
  constexpr QSizeF kDrawn(51, 46);
  painter.save();
  painter.fillRect(area, Qt::white);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(area.topLeft());
  painter.scale(area.width() / kDrawn.width(), area.height() / kDrawn.height());
  QPainterPath tick(QPointF(6, 25));
  tick.lineTo(19, 38);
  tick.lineTo(45, 8);
  painter.setPen(QPen(QColor(0x00, 0xa0, 0x2c), 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(tick);
  painter.restore();
}

void paintDropArrow(QPainter& painter, const QRect& area, const QColor& colour) {
  constexpr qreal kWidth = 10;
  constexpr qreal kHeight = 5;
  const QPointF middle(area.right() - kDropArrowRoom + kWidth / 2, area.center().y());
  QPainterPath arrow(middle - QPointF(kWidth, kHeight - 1) / 2);
  arrow.lineTo(middle + QPointF(0, (kHeight + 1) / 2));
  arrow.lineTo(middle + QPointF(kWidth, 1 - kHeight) / 2);
  paintLine(painter, arrow, colour, 1.75);
}

void paintCheckBoxMark(QPainter& painter, const QRect& box, const QColor& colour) {
  const QPointF from = QRectF(box).topLeft();
  const qreal size = box.width() / 16.0;
  QPainterPath mark(from + QPointF(4, 8.2) * size);
  mark.lineTo(from + QPointF(7, 11.2) * size);
  mark.lineTo(from + QPointF(12, 4.8) * size);
  paintLine(painter, mark, colour, 2);
}

QIcon programIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f, 0x3b, 0x57));
    painter.drawRoundedRect(QRectF(0, 0, size, size), size * 0.16, size * 0.16);
    const double pitch = size * 0.28;
    const double key = size * 0.22;
    for (int i = 0; i < 9; ++i) {
      painter.setBrush(i == 4 ? QColor(0x3c, 0xc4, 0x6b) : QColor(0xf4, 0xf6, 0xf8));
      const int row = i / 3;
      const QPointF at(size * 0.11 + pitch * (i % 3), size * 0.11 + pitch * row);
      painter.drawRoundedRect(QRectF(at, QSizeF(key, key)), size * 0.03, size * 0.03);
    }
    icon.addPixmap(picture);
  }
  return icon;
}

QIcon messageIcon(MessageIcon note) {
  QIcon icon;
  for (const int size : {32, 48, 64, 96}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(note == MessageIcon::Failure ? QColor(0xc6, 0x28, 0x28)
                                                  : QColor(0x1e, 0x6f, 0xb8));
    painter.drawEllipse(QRectF(1, 1, 30, 30));
    painter.setPen(QPen(Qt::white, 3.2, Qt::SolidLine, Qt::RoundCap));
    if (note == MessageIcon::Failure) {
      painter.drawLine(QPointF(11, 11), QPointF(21, 21));
      painter.drawLine(QPointF(21, 11), QPointF(11, 21));
    } else {
      painter.drawLine(QPointF(16, 15), QPointF(16, 23));
      painter.drawPoint(QPointF(16, 9));
    }
    icon.addPixmap(picture);
  }
  return icon;
}

QPixmap dragPicture(const QString& text, const QFont& font, const QPalette& palette,
                    qreal density) {
  constexpr int kMargin = 8;
  constexpr int kWidest = 320;
  const QFontMetrics metrics(font);
  const QString shown = metrics.elidedText(text, Qt::ElideRight, kWidest);
  const QSize size(metrics.horizontalAdvance(shown) + 2 * kMargin, metrics.height() + kMargin);

  QPixmap picture(size * density);
  picture.setDevicePixelRatio(density);
  QPainter painter(&picture);
  {
    // Not rounded: without a compositor the corners couldn't be transparent.
    DeviceFrames frames(painter, QRect({0, 0}, size), 0);
    const QColor back = palette.color(QPalette::Highlight);
    frames.fill(back);
    frames.frame(mixed(back, markOn(back), 0.4), 1, 0);
  }
  painter.setFont(font);
  painter.setPen(palette.color(QPalette::HighlightedText));
  painter.drawText(QRect({0, 0}, size), Qt::AlignCenter | Qt::TextSingleLine, shown);
  return picture;
}

}  // namespace forms::qt
