#pragma once

#include <QIcon>
#include <QPainter>
#include <QPixmap>

namespace forms::qt {

/// A green tick on white, drawn for an area of 51 by 46 and scaled to the given one.
void paintTick(QPainter& painter, const QRectF& area);

/// The arrow of a drop-down list, in the middle of the right end of an area.
void paintDropArrow(QPainter& painter, const QRect& area, const QColor& colour);
/// The width that the arrow takes, with the margin on its right.
inline constexpr int kDropArrowRoom = 18;

/// The mark inside a checked check box.
void paintCheckBoxMark(QPainter& painter, const QRect& box, const QColor& colour);

/// The program's icon: a block of keys, one of them lit.
QIcon programIcon();

/// The icon of a message box.
enum class MessageIcon { Information, Failure };
QIcon messageIcon(MessageIcon note);

/// The picture under the pointer while a text is dragged.
QPixmap dragPicture(const QString& text, const QFont& font, const QPalette& palette, qreal density);

}  // namespace forms::qt
