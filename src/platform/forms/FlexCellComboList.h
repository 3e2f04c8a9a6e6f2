#pragma once

#include <string_view>

namespace forms::qt {
class GridView;
}

namespace FlexCell {

/// The drop-down list of a grid's column. An item is one text. A run of a hundred blanks or more
/// before its last comma begins the item's hidden part, which is neither shown nor written to the
/// cell.
class ComboList {
 public:
  ComboList(forms::qt::GridView& view, int column) : view_(view), column_(column) {}

  void AddItem(std::u16string_view item);

 private:
  forms::qt::GridView& view_;
  int column_;
};

}  // namespace FlexCell
