#pragma once

#include <QStyledItemDelegate>

namespace forms::qt {

/// Draws each entry of a list or a drop-down list in one line: the text `inset` pixels from the
/// left edge, in a row high enough for a finger. A text that is too long is cut by the list's elide
/// mode.
class EntryPainter : public QStyledItemDelegate {
 public:
  EntryPainter(int inset, QObject* list);
  /// Draws the first `characters` characters of each text, digits or blanks, in a fixed-width
  /// column, so that the rest is aligned in all rows.
  void setNumberColumn(int characters) { numberColumn_ = characters; }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  int inset_;
  int numberColumn_ = 0;
};

}  // namespace forms::qt
