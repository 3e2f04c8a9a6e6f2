#include "platform/forms/qt/ButtonPainter.h"

#include <QPixmapCache>
#include <array>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/DeviceFrames.h"

namespace forms::qt {
namespace {

constexpr double kSideMargin = 4;
constexpr double kTopMargin = 2;
constexpr qreal kRadius = 3;

void drawPlate(QPainter& painter, const QRectF& area, const ButtonAppearance& look,
               const QColor& accent) {
  const QColor mark = markOn(look.back);
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

/// The cached picture of a button without its caption; `size` is in device pixels. Few different
/// pictures serve all keys, and drawing the rounded frame costs more than the rest of a key.
QPixmap plateOf(const ButtonAppearance& look, const QColor& accent, QSize size, qreal density) {
  const auto states = static_cast<QRgb>(look.hovered | look.pressed << 1 | look.focusMark << 2);
  const std::array<QRgb, 6> cacheKey{look.back.rgba(),
                                     accent.rgba(),
                                     static_cast<QRgb>(size.width()),
                                     static_cast<QRgb>(size.height()),
                                     static_cast<QRgb>(qRound(density * 1000)),
                                     states};
  const QString name(reinterpret_cast<const QChar*>(cacheKey.data()),
                     sizeof cacheKey / sizeof(QChar));
  QPixmap plate;
  if (QPixmapCache::find(name, &plate)) return plate;
  plate = QPixmap(size);
  plate.fill(Qt::transparent);
  QPainter painter(&plate);
  painter.scale(density, density);
  drawPlate(painter, {{}, QSizeF(size) / density}, look, accent);
  painter.end();
  QPixmapCache::insert(name, plate);
  return plate;
}

}  // namespace

void paintButton(QPainter& painter, const QRect& area, const ButtonAppearance& look,
                 CaptionLayout& caption, const QColor& accent) {
  const QTransform toDevice = painter.deviceTransform();
  const QRect bounds = deviceBounds(painter, area);
  painter.save();
  painter.setTransform(toDevice.inverted(), true);
  painter.drawPixmap(bounds.topLeft(), plateOf(look, accent, bounds.size(), toDevice.m11()));
  painter.restore();
  const int side = qRound(kSideMargin * look.scale);
  const int top = qRound(kTopMargin * look.scale);
  QRect room = area.adjusted(side, top, -side, -top);
  if (look.pressed) room.translate(0, 1);
  painter.setPen(look.text);
  caption.paint(painter, room, (side + 1) / 2);
  // Painted after the caption, which may extend into the mark.
  if (look.dropMark) {
    DeviceFrames frames(painter, area, kRadius);
    frames.frame(accent, 4, 0);
    frames.frame(markOn(look.back), 2, 4);
  }
}

}  // namespace forms::qt
