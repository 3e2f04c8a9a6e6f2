#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace FlexCell {

/// Kinds of a cell.
enum class CellType : int { Text = 0, ComboBox = 1, CheckBox = 2 };

/// What the screen stores for the sheet. Row heights and column widths are in pixels of 15 twips.
struct GridDesign : forms::Design {
  int rows = 0;
  int cols = 0;
  int defaultRowHeight = 20;
  bool extendLastCol = false;
  int enterKeyMoveTo = 0;  ///< 1: Enter goes one row down
  forms::Colour backColourActiveCell = forms::kWhite;
  forms::Colour backColourSelection = forms::kWhite;
  forms::Colour borderColour = forms::kBlack;
  forms::Colour selectionBorderColour = forms::kBlack;
  forms::Colour gridColour = forms::kBlack;
};

class Grid;

/// One cell, named by row and column.
class Cell {
 public:
  /// A check cell's text is "1" when it is checked; any other text shows as unchecked.
  std::u16string Text() const;
  void Text(std::u16string_view text);
  /// Kept as a value: the one code in use, 6, and the initial 0 both mean left, centred vertically.
  void Alignment(int code);
  void Kind(CellType kind);
  /// Makes it the active cell.
  void SetFocus();

 private:
  friend class Grid;
  Cell(Grid& grid, int row, int column) : grid_(grid), row_(row), column_(column) {}
  Grid& grid_;
  int row_, column_;
};

/// Where the active cell stands.
struct ActiveCell {
  int Row = 0;
  int Col = 0;
};

/// One column.
class Column {
 public:
  /// Keeps the user from changing the column's cells; code may.
  void Locked(bool readOnly);
  /// In pixels of 15 twips.
  void Width(int pixels);
  /// Gives all cells of the column this kind.
  void Kind(CellType kind);
  /// The most characters that can be typed into a cell of the column.
  void MaxLength(int characters);

 private:
  friend class Grid;
  Column(Grid& grid, int column) : grid_(grid), column_(column) {}
  Grid& grid_;
  int column_;
};

/// A column's drop-down list. An item is one text; a long run of blanks, a hundred or more, with
/// the last comma behind it begins the item's hidden part, which neither shows nor reaches the
/// cell.
class ComboList {
 public:
  void AddItem(std::u16string_view item);

 private:
  friend class Grid;
  ComboList(Grid& grid, int column) : grid_(grid), column_(column) {}
  Grid& grid_;
  int column_;
};

/// A sheet of cells that the user fills in. The first row and the first column are its fixed frame.
/// One cell is active: what is typed goes into it at once, and its text can be read while it is
/// typed. Rows, columns and cells outside the sheet raise error 9.
class Grid : public forms::Control {
 public:
  Grid(forms::Container& container, const GridDesign& design);
  ~Grid() override;

  FlexCell::Cell Cell(int row, int column);
  FlexCell::ActiveCell ActiveCell() const;
  FlexCell::Column Column(int column);
  FlexCell::ComboList ComboBox(int column);
  /// In pixels of 15 twips; 0 hides the row.
  void RowHeight(int row, int pixels);
  /// Two display options, kept as values.
  void DisplayFocusRect(bool on);
  bool DisplayFocusRect() const;
  void DisplayRowIndex(int style);
  int DisplayRowIndex() const;

  /// A click in the sheet, after the active cell has moved there.
  forms::Event<> Click;
  /// An item was picked in a drop-down; its text is in the cell already.
  forms::Event<std::int16_t> ComboClick;

 protected:
  void rescaled() override;

 private:
  friend class FlexCell::Cell;
  friend class FlexCell::Column;
  friend class FlexCell::ComboList;
  struct Sheet;
  std::unique_ptr<Sheet> sheet_;
};

}  // namespace FlexCell
