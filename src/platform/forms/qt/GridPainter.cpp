#include "platform/forms/qt/GridPainter.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include "platform/forms/qt/Colours.h"
#include "platform/forms/qt/GridView.h"
#include "platform/forms/qt/Pictures.h"

namespace forms::qt {
namespace {

/// The width of a line in logical pixels: one, rounded down to a full number of device pixels, but
/// at least one device pixel.
qreal hairline(const QPainter& painter) {
  const qreal density = painter.device()->devicePixelRatioF();
  return qMax(1, qFloor(density)) / density;
}

/// Paints a border of `lines` hairlines.
void paintBorder(QPainter& painter, const QRectF& area, const QColor& colour, int lines) {
  const qreal line = hairline(painter) * lines;
  painter.fillRect(QRectF(area.left(), area.top(), area.width(), line), colour);
  painter.fillRect(QRectF(area.left(), area.bottom() - line, area.width(), line), colour);
  painter.fillRect(QRectF(area.left(), area.top(), line, area.height()), colour);
  painter.fillRect(QRectF(area.right() - line, area.top(), line, area.height()), colour);
}

/// Paints the lines to the right of a cell and below it, but none at the grid's own border.
void paintGrid(QPainter& painter, const QRectF& area, const QModelIndex& cell,
               const QColor& colour) {
  const qreal line = hairline(painter);
  if (cell.column() + 1 < cell.model()->columnCount())
    painter.fillRect(QRectF(area.right() - line, area.top(), line, area.height()), colour);
  if (cell.row() + 1 < cell.model()->rowCount())
    painter.fillRect(QRectF(area.left(), area.bottom() - line, area.width(), line), colour);
}

}  // namespace

GridColours::GridColours(const FlexCell::GridDesign& design, const QPalette& palette)
    : back(drawnColour(design.control.backColour, palette)),
      text(textOn(design.control.foreColour, back, palette)),
      fixedBack(drawnColour(kButtonFace, palette)),
      active(drawnColour(design.backColourActiveCell, palette)),
      activeText(textOn(design.control.foreColour, active, palette)),
      activeBorder(drawnColour(design.selectionBorderColour, palette)),
      focus(palette.color(QPalette::Highlight)),
      grid(drawnColour(design.gridColour, palette)),
      border(drawnColour(design.borderColour, palette)) {
  constexpr double kVisible = 2;
  if (contrast(focus, active) < kVisible) focus = activeText;
}

GridPainter::GridPainter(GridView& view) : QStyledItemDelegate(&view), view_(view) {}

void GridPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const GridModel& grid = view_.gridModel();
  const GridColours& colours = view_.colours();
  const bool active = index == view_.currentIndex();
  const bool fixed = grid.isFixed(index);
  painter->fillRect(option.rect, fixed    ? colours.fixedBack
                                 : active ? colours.active
                                          : colours.back);
  paintGrid(*painter, option.rect, index, colours.grid);
  if (active && view_.holdsFocus())
    paintBorder(*painter, option.rect, colours.focus, 2);
  else if (active)
    paintBorder(*painter, option.rect, colours.activeBorder, 1);
  if (fixed || (active && view_.editor() != nullptr)) return;

  painter->setFont(option.font);
  const QRect cell = option.rect.adjusted(0, 0, -1, -1);
  const QColor& colour = active ? colours.activeText : colours.text;
  switch (grid.kind(index)) {
    case FlexCell::CellType::Text:
      paintText(*painter, cell, grid.text(index), colour);
      break;
    case FlexCell::CellType::ComboBox:
      paintDropDown(*painter, cell, grid.text(index), colour);
      break;
    case FlexCell::CellType::CheckBox:
      paintCheckBox(*painter, option, index.data(Qt::CheckStateRole).toInt() == Qt::Checked);
      break;
  }
}

void GridPainter::paintText(QPainter& painter, const QRect& cell, const QString& text,
                            const QColor& colour) {
  const QRect area = cell.adjusted(kCellInset, 0, -kCellInset, 0);
  painter.setPen(colour);
  painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, area.width()));
}

void GridPainter::paintDropDown(QPainter& painter, const QRect& cell, const QString& text,
                                const QColor& colour) {
  paintText(painter, cell.adjusted(0, 0, -kDropArrowRoom, 0), text, colour);
  paintDropArrow(painter, cell, colour);
}

/// Paints a white box with a clear edge in every theme and on every cell colour.
void GridPainter::paintCheckBox(QPainter& painter, const QStyleOptionViewItem& option,
                                bool checked) const {
  QStyleOptionButton box;
  box.initFrom(&view_);
  box.palette.setColor(QPalette::Base, Qt::white);
  box.palette.setColor(QPalette::Text, Qt::black);
  box.state = QStyle::State_Enabled | (checked ? QStyle::State_On : QStyle::State_Off);
  const int side = view_.style()->pixelMetric(QStyle::PM_IndicatorWidth);
  box.rect = QRect(option.rect.left() + kCellInset,
                   option.rect.top() + (option.rect.height() - side) / 2, side, side);
  view_.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, &view_);
}

}  // namespace forms::qt
