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

/// A sheet of cells that the user fills in. The first row and the first column are its fixed frame.
/// One cell is active: what is typed goes into it at once, and its text can be read while it is
/// typed. Rows, columns and cells outside the sheet raise SubscriptOutOfRange.
class Grid : public forms::Control {
 public:
  Grid(forms::Container& container, const GridDesign& design);

  /// What the screen stores, also what is only kept as a value.
  const GridDesign& design() const { return design_; }

  FlexCell::Cell Cell(int row, int column);
  FlexCell::ActiveCell ActiveCell() const;
  FlexCell::Column Column(int column);
  FlexCell::ComboList ComboBox(int column);
  /// In pixels of 15 twips; 0 hides the row.
  void RowHeight(int row, int pixels);
  /// Two display options, kept as values.
  void DisplayFocusRect(bool on) { focusRect_ = on; }
  bool DisplayFocusRect() const { return focusRect_; }
  void DisplayRowIndex(int style) { rowIndexStyle_ = style; }
  int DisplayRowIndex() const { return rowIndexStyle_; }

  /// A click in the sheet, after the active cell has moved there.
  forms::Event<> Click;
  /// An item was picked in a drop-down; its text is in the cell already.
  forms::Event<std::int16_t> ComboClick;

 protected:
  void rescaled() override;

 private:
  forms::qt::SheetView& view() const;

  GridDesign design_;
  bool focusRect_ = true;
  int rowIndexStyle_ = 0;
};

}  // namespace FlexCell
