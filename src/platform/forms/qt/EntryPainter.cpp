#include "platform/forms/qt/EntryPainter.h"

#include <QPainter>

namespace forms::qt {

EntryPainter::EntryPainter(int inset, int room, QObject* list)
    : QStyledItemDelegate(list), inset_(inset), room_(room) {}

QSize EntryPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {1, option.fontMetrics.height() + room_};
}

void EntryPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  // The Enter key takes the current entry of a drop-down list, selected or not.
  const bool selected = (option.state & (QStyle::State_Selected | QStyle::State_HasFocus)) != 0;
  const QPalette& colours = option.palette;
  painter->fillRect(option.rect, selected ? colours.highlight() : colours.base());
  const bool cut = option.textElideMode == Qt::ElideNone;
  const QRect place = option.rect.adjusted(inset_, 0, cut ? 0 : -inset_, 0);
  const QString text = index.data(Qt::DisplayRole).toString();
  painter->setFont(option.font);
  painter->setPen(colours.color(selected ? QPalette::HighlightedText : QPalette::Text));
  painter->setClipRect(option.rect);
  painter->drawText(
      place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
      cut ? text : option.fontMetrics.elidedText(text, option.textElideMode, place.width()));
  painter->setClipping(false);
}

}  // namespace forms::qt
