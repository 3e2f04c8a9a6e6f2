#pragma once

namespace FlexCell {

/// Kinds of a cell.
enum class CellType : int { Text = 0, ComboBox = 1, CheckBox = 2 };

}  // namespace FlexCell
