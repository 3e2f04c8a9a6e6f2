#pragma once

#include <cstdint>

#include "platform/forms/Control.h"
#include "platform/forms/FlexCellCell.h"
#include "platform/forms/FlexCellColumn.h"
#include "platform/forms/FlexCellComboList.h"
#include "platform/forms/GridDesign.h"

namespace FlexCell {

/// Row and column of the active cell.
struct ActiveCell {
  int Row = 0;
  int Col = 0;
};

/// A grid of cells that the user fills in. Its first row and first column are fixed headers. One
/// cell is active; each typed character changes its text at once. Rows, columns and cells outside
/// the grid raise SubscriptOutOfRange.
class Grid : public forms::Control {
 public:
  Grid(forms::Container& container, const GridDesign& design);

  /// The initial properties, including those without effect.
  const GridDesign& design() const { return design_; }

  FlexCell::Cell Cell(int row, int column);
  FlexCell::ActiveCell ActiveCell() const;
  FlexCell::Column Column(int column);
  FlexCell::ComboList ComboBox(int column);
  /// In pixels of 15 twips; 0 hides the row.
  void RowHeight(int row, int pixels);
  /// Two display options, stored without effect.
  void DisplayFocusRect(bool on) { focusRect_ = on; }
  bool DisplayFocusRect() const { return focusRect_; }
  void DisplayRowIndex(int style) { rowIndexStyle_ = style; }
  int DisplayRowIndex() const { return rowIndexStyle_; }

  /// A click in the grid, raised after the active cell has moved there.
  forms::Event<> Click;
  /// An item was chosen in a drop-down list, raised after the cell has its text.
  forms::Event<std::int16_t> ComboClick;

 protected:
  void rescaled() override;

 private:
  forms::qt::GridView& view() const;

  GridDesign design_;
  bool focusRect_ = true;
  int rowIndexStyle_ = 0;
};

}  // namespace FlexCell
