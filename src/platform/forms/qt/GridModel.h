#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "platform/forms/CellType.h"

namespace forms::qt {

/// The content of a grid: texts and kinds of its cells, and the settings of its columns. The first
/// row and the first column are the grid's fixed headers.
class GridModel : public QAbstractTableModel {
 public:
  static constexpr int kFixedRows = 1;
  static constexpr int kFixedColumns = 1;

  GridModel(int rows, int columns, QObject* parent);

  QString text(const QModelIndex& cell) const { return at(cell).text; }
  void setText(const QModelIndex& cell, const QString& text);
  FlexCell::CellType kind(const QModelIndex& cell) const { return at(cell).kind; }
  void setKind(const QModelIndex& cell, FlexCell::CellType kind);
  void setColumnKind(int column, FlexCell::CellType kind);
  void setAlignmentCode(const QModelIndex& cell, int code) { at(cell).alignmentCode = code; }

  bool isFixed(const QModelIndex& cell) const;
  bool isLocked(int column) const { return columns_[toSize(column)].locked; }
  void setLocked(int column, bool locked);
  /// Whether the user can change the cell's text.
  bool isEditable(const QModelIndex& cell) const {
    return !isFixed(cell) && !isLocked(cell.column());
  }
  /// Maximum number of 16-bit units that can be typed; 0 for no limit.
  int maxLength(int column) const { return columns_[toSize(column)].maxLength; }
  void setMaxLength(int column, int characters) { columns_[toSize(column)].maxLength = characters; }
  /// The texts of the column's drop-down list, without hidden parts.
  const QStringList& items(int column) const { return columns_[toSize(column)].items; }
  void addItem(int column, const QString& item) { columns_[toSize(column)].items.append(item); }

  /// The label of a cell: the text of the nearest locked cell on its left.
  QString label(const QModelIndex& cell) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Cell {
    QString text;
    FlexCell::CellType kind = FlexCell::CellType::Text;
    int alignmentCode = 0;
  };
  struct Column {
    bool locked = false;
    int maxLength = 0;
    QStringList items;
  };

  static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
  const Cell& at(const QModelIndex& cell) const;
  Cell& at(const QModelIndex& cell);
  QString spokenText(const QModelIndex& cell) const;

  int rows_;
  std::vector<Column> columns_;
  std::vector<Cell> cells_;
};

}  // namespace forms::qt
