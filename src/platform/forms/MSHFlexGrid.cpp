#include "platform/forms/MSHFlexGrid.h"

#include "platform/forms/qt/Surface.h"
#include "platform/runtime/RunTimeError.h"

namespace MSHierarchicalFlexGridLib {
namespace {

std::size_t checked(int index, int count) {
  if (index < 0 || index >= count)
    throw runtime::RunTimeError(runtime::ErrorNumber::SubscriptOutOfRange);
  return static_cast<std::size_t>(index);
}

}  // namespace

MSHFlexGrid::MSHFlexGrid(forms::Container& container, const forms::Design& design, int rows,
                         int columns)
    : Control(container, design, 0, new forms::qt::Surface(container.client(), design.backColour)),
      rows_(rows),
      columns_(columns),
      cells_(static_cast<std::size_t>(rows),
             std::vector<std::u16string>(static_cast<std::size_t>(columns))) {}

const std::u16string& MSHFlexGrid::TextMatrix(int row, int column) const {
  return cells_[checked(row, rows_)][checked(column, columns_)];
}

void MSHFlexGrid::TextMatrix(int row, int column, std::u16string_view text) {
  cells_[checked(row, rows_)][checked(column, columns_)] = text;
}

void MSHFlexGrid::Cols(int columns) {
  if (columns < 0) throw runtime::RunTimeError(runtime::ErrorNumber::InvalidPropertyValue);
  columns_ = columns;
  for (auto& row : cells_) row.resize(static_cast<std::size_t>(columns));
}

}  // namespace MSHierarchicalFlexGridLib
