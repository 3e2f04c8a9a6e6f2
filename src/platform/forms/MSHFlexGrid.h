#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Control.h"

namespace MSHierarchicalFlexGridLib {

/// A table of texts, rows and columns counted from 0. The screens of this program never show it;
/// they store in it what a key can't show.
class MSHFlexGrid : public forms::Control {
 public:
  MSHFlexGrid(forms::Container& container, const forms::Design& design, int rows, int columns);

  /// The text of a cell. A cell outside the table raises SubscriptOutOfRange.
  const std::u16string& TextMatrix(int row, int column) const;
  void TextMatrix(int row, int column, std::u16string_view text);
  /// Sets the number of columns; the texts in the remaining columns stay.
  void Cols(int columns);

 private:
  int rows_;
  int columns_;
  std::vector<std::vector<std::u16string>> cells_;
};

}  // namespace MSHierarchicalFlexGridLib
