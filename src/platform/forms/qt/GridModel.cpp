#include "platform/forms/qt/GridModel.h"

namespace forms::qt {

using FlexCell::CellType;

GridModel::GridModel(int rows, int columns, QObject* parent)
    : QAbstractTableModel(parent),
      rows_(rows),
      columns_(toSize(columns)),
      cells_(toSize(rows) * toSize(columns)) {}

const GridModel::Cell& GridModel::at(const QModelIndex& cell) const {
  return cells_[toSize(cell.row()) * columns_.size() + toSize(cell.column())];
}

GridModel::Cell& GridModel::at(const QModelIndex& cell) {
  return cells_[toSize(cell.row()) * columns_.size() + toSize(cell.column())];
}

void GridModel::setText(const QModelIndex& cell, const QString& text) {
  if (at(cell).text == text) return;
  at(cell).text = text;
  emit dataChanged(cell, cell);
}

void GridModel::setKind(const QModelIndex& cell, CellType kind) {
  at(cell).kind = kind;
  emit dataChanged(cell, cell);
}

void GridModel::setColumnKind(int column, CellType kind) {
  for (int row = 0; row < rows_; ++row) at(index(row, column)).kind = kind;
  emit dataChanged(index(0, column), index(rows_ - 1, column));
}

bool GridModel::isFixed(const QModelIndex& cell) const {
  return cell.row() < kFixedRows || cell.column() < kFixedColumns;
}

void GridModel::setLocked(int column, bool locked) {
  columns_[toSize(column)].locked = locked;
  emit dataChanged(index(0, column), index(rows_ - 1, column));
}

QString GridModel::label(const QModelIndex& cell) const {
  for (int column = cell.column() - 1; column >= kFixedColumns; --column)
    if (isLocked(column)) return text(index(cell.row(), column));
  return {};
}

/// The text for screen readers: label and value. A check cell has only its label, since readers get
/// its state.
QString GridModel::spokenText(const QModelIndex& cell) const {
  QString label = this->label(cell);
  if (kind(cell) == CellType::CheckBox) return label;
  if (label.isEmpty() || isLocked(cell.column())) return text(cell);
  return text(cell).isEmpty() ? label : label + QStringLiteral(": ") + text(cell);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return text(index);
    case Qt::AccessibleTextRole:
      return spokenText(index);
    case Qt::AccessibleDescriptionRole:
      return isEditable(index) && kind(index) == CellType::CheckBox ? QStringLiteral("Check box")
                                                                    : QString();
    case Qt::CheckStateRole:
      if (kind(index) != CellType::CheckBox) return {};
      return text(index) == u"1" ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

// No headers for screen readers: the fixed row and column are cells of the grid.
QVariant GridModel::headerData(int, Qt::Orientation, int) const {
  return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (!isFixed(index)) flags |= Qt::ItemIsSelectable;
  if (!isEditable(index)) return flags;
  return flags | (kind(index) == CellType::CheckBox ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

}  // namespace forms::qt
