#pragma once

#include <QPersistentModelIndex>
#include <QTableView>
#include <cstdint>
#include <vector>

#include "platform/forms/Event.h"
#include "platform/forms/GridDesign.h"
#include "platform/forms/qt/CellDropDown.h"
#include "platform/forms/qt/CellEdit.h"
#include "platform/forms/qt/GridModel.h"
#include "platform/forms/qt/GridPainter.h"

class QAccessibleInterface;

namespace forms::qt {

/// The events of a grid, raised through the dispatcher.
struct GridEvents {
  const Event<>& click;
  const Event<std::int16_t>& comboClick;
};

/// The widget of a grid. An editable text or drop-down cell shows its editor whenever it is active,
/// so the user can type at once; each change goes into the cell immediately.
class GridView final : public QTableView {
 public:
  GridView(QWidget* parent, const FlexCell::GridDesign& design, const GridEvents& events);

  GridModel& gridModel() const { return *gridModel_; }
  const GridColours& colours() const { return colours_; }
  QModelIndex cell(int row, int column) const { return gridModel_->index(row, column); }

  /// Sizes in pixels of 15 twips; they follow the scale at which the screen is laid out.
  void setHeight(int row, int pixels);
  void setWidth(int column, int pixels);
  void rescale(double scale);

  /// Adapts the active cell's editor after a change of the cell or its column.
  void refreshEditor();
  /// The editor of the active cell, null for a check cell or a locked one.
  QWidget* editor() const;

  /// Moves the active cell by a key; false for a key that doesn't move it.
  bool navigate(const QKeyEvent& event);
  /// Moves the focus to the next control or the previous one; false where there is none.
  bool leave(bool next);
  /// Raises the click event, also for a click on an editor.
  void click();
  void openDropDown();
  /// Tells screen readers that the active cell has the focus.
  void announceCell();
  /// True when the grid, its editor or its open list has the focus.
  bool holdsFocus() const;
  void fillDropDown();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                   const QList<int>& roles) override;
  void updateEditorGeometries() override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void applyColours();
  void applySizes();
  void syncEditor();
  void step(int rows, int columns);
  void toggle(const QModelIndex& cell);
  QAccessibleInterface* accessibleCell(const QModelIndex& cell);
  void pick(int item);

  FlexCell::GridDesign design_;
  GridEvents events_;
  GridModel* gridModel_;
  GridColours colours_;
  CellEdit* edit_ = nullptr;
  CellDropDown* dropDown_ = nullptr;
  std::vector<int> heights_;
  std::vector<int> widths_;
  int listedColumn_ = 0;  ///< the column whose list the drop-down holds
  double scale_ = 1;
  QPersistentModelIndex pressed_;
  bool leaving_ = false;
};

}  // namespace forms::qt
