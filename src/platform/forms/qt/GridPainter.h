#pragma once

#include <QMargins>
#include <QPalette>
#include <QStyledItemDelegate>

#include "platform/forms/GridDesign.h"

namespace forms::qt {

class GridView;

/// Distance of a cell's content from the cell's edges, in pixels.
inline constexpr int kCellInset = 8;
/// Margins between a cell's edges and its editor, for the focus mark and the grid lines; chosen so
/// that editor and painted text have the same vertical centre.
inline constexpr QMargins kEditorMargins(2, 2, 2, 3);

/// The colours in which a grid is drawn.
struct GridColours {
  GridColours(const FlexCell::GridDesign& design, const QPalette& palette);
  bool operator==(const GridColours&) const = default;
  QColor back, text, fixedBack, active, activeText, activeBorder, focus, grid, border;
};

/// Paints the cells of a grid.
class GridPainter : public QStyledItemDelegate {
 public:
  explicit GridPainter(GridView& view);
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

  /// A text in one line, cut with "…" where it is too long.
  static void paintText(QPainter& painter, const QRect& cell, const QString& text,
                        const QColor& colour);
  /// The content of a drop-down cell: its text and the arrow.
  static void paintDropDown(QPainter& painter, const QRect& cell, const QString& text,
                            const QColor& colour);

 private:
  void paintCheckBox(QPainter& painter, const QStyleOptionViewItem& option, bool checked) const;
  const GridView& view_;
};

}  // namespace forms::qt
