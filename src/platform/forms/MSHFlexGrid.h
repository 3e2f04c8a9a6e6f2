#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Control.h"

namespace MSHierarchicalFlexGridLib {

/// A table of texts, rows and columns counted from 0. On the screens of this program it is never
/// shown; it is a store of what a key can't show.
class MSHFlexGrid : public forms::Control {
 public:
  MSHFlexGrid(forms::Container& container, const forms::Design& design, int rows, int columns);

  /// The text of a cell. A cell outside the table raises SubscriptOutOfRange.
  const std::u16string& TextMatrix(int row, int column) const;
  void TextMatrix(int row, int column, std::u16string_view text);
  int Rows() const { return rows_; }
  int Cols() const { return columns_; }
  /// Sets the number of columns; texts in columns that stay are kept.
  void Cols(int columns);

 private:
  int rows_;
  int columns_;
  std::vector<std::vector<std::u16string>> cells_;
};

}  // namespace MSHierarchicalFlexGridLib
