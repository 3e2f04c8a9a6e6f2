#include "platform/forms/qt/EntryPainter.h"

#include <QFontInfo>
#include <QPainter>

namespace forms::qt {

EntryPainter::EntryPainter(int inset, QObject* list) : QStyledItemDelegate(list), inset_(inset) {}

QSize EntryPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  constexpr qreal kRowHeight = 2.25;  // of the font's size: 29 pixels for the usual font
  constexpr int kMost = 30;
  const int height = qMin(qRound(QFontInfo(option.font).pixelSize() * kRowHeight), kMost);
  return {1, qMax(height, option.fontMetrics.height())};
}

void EntryPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  // In a drop-down list the Enter key chooses the current entry, selected or not.
  const bool selected = (option.state & (QStyle::State_Selected | QStyle::State_HasFocus)) != 0;
  const QPalette& colours = option.palette;
  painter->fillRect(option.rect, selected ? colours.highlight() : colours.base());
  const bool cut = option.textElideMode == Qt::ElideNone;
  QRect room = option.rect.adjusted(inset_, 0, cut ? 0 : -inset_, 0);
  QString text = index.data(Qt::DisplayRole).toString();
  constexpr int kAlignment = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
  painter->setFont(option.font);
  painter->setPen(colours.color(selected ? QPalette::HighlightedText : QPalette::Text));
  painter->setClipRect(option.rect);
  if (numberColumn_ > 0) {
    painter->drawText(room, kAlignment, text.left(numberColumn_));
    text.remove(0, numberColumn_);
    room.setLeft(room.left() + numberColumn_ * option.fontMetrics.horizontalAdvance('0'));
  }
  painter->drawText(
      room, kAlignment,
      cut ? text : option.fontMetrics.elidedText(text, option.textElideMode, room.width()));
  painter->setClipping(false);
}

}  // namespace forms::qt
