#pragma once

#include <string>
#include <string_view>

#include "platform/forms/CellType.h"

namespace forms::qt {
class GridView;
}

namespace FlexCell {

/// One cell of a grid, addressed by row and column.
class Cell {
 public:
  Cell(forms::qt::GridView& view, int row, int column) : view_(view), row_(row), column_(column) {}

  /// A check cell's text is "1" when it is checked; any other text shows as unchecked.
  std::u16string Text() const;
  void Text(std::u16string_view text);
  /// Stored without effect: cells are always left-aligned and vertically centred. That is the
  /// meaning of 6, the only code that the screens set, and of 0, the initial one.
  void Alignment(int code);
  void Kind(CellType kind);
  /// Makes this the active cell.
  void SetFocus();

 private:
  forms::qt::GridView& view_;
  int row_, column_;
};

}  // namespace FlexCell
