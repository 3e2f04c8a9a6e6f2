#pragma once

#include "platform/forms/CellType.h"

namespace forms::qt {
class GridView;
}

namespace FlexCell {

/// One column of a grid.
class Column {
 public:
  Column(forms::qt::GridView& view, int column) : view_(view), column_(column) {}

  /// Keeps the user from changing the column's cells; code may still change them.
  void Locked(bool readOnly);
  /// In pixels of 15 twips.
  void Width(int pixels);
  /// Sets the kind of all cells of the column.
  void Kind(CellType kind);
  /// The most 16-bit units that can be typed into a cell of the column; 0 for no limit.
  void MaxLength(int characters);

 private:
  forms::qt::GridView& view_;
  int column_;
};

}  // namespace FlexCell
