#pragma once

#include <QStyledItemDelegate>

namespace forms::qt {

/// Draws the entries of a list or a drop-down list in one line: the text `inset` pixels from the
/// left edge, the row `room` pixels higher than the text. A text that is too long is cut as the
/// list's elide mode says.
class EntryPainter : public QStyledItemDelegate {
 public:
  EntryPainter(int inset, int room, QObject* list);
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  int inset_;
  int room_;
};

}  // namespace forms::qt
