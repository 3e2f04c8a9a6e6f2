#include "platform/forms/FlexCellComboList.h"

#include "platform/forms/qt/GridView.h"
#include "platform/forms/qt/WideText.h"

namespace FlexCell {
namespace {

// The number of blanks before the comma that marks the rest of an item as hidden; fewer blanks
// belong to the text.
constexpr std::size_t kHidingBlanks = 100;

std::u16string_view shownPart(std::u16string_view item) {
  const std::size_t comma = item.rfind(u',');
  if (comma == std::u16string_view::npos) return item;
  const std::size_t last = item.substr(0, comma).find_last_not_of(u' ');
  const std::size_t shown = last == std::u16string_view::npos ? 0 : last + 1;
  return comma - shown >= kHidingBlanks ? item.substr(0, shown) : item;
}

}  // namespace

void ComboList::AddItem(std::u16string_view item) {
  view_.gridModel().addItem(column_, forms::qt::toQt(shownPart(item)));
}

}  // namespace FlexCell
