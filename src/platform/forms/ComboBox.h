#pragma once

#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A drop-down list, drawn in the window colours: one of its entries can be chosen, nothing can be
/// typed. Only a click or a key chooses; a turn of the wheel over the closed list changes nothing.
class ComboBox : public Control {
 public:
  ComboBox(Container& container, const Design& design);
  void AddItem(std::u16string_view entry);
  int ListCount() const;
  /// -1: nothing chosen.
  int ListIndex() const;
  /// Chooses an entry (-1: none) and always raises `Click`, nested in this call, also when the
  /// entry is chosen already. An index outside the list raises InvalidPropertyValue.
  void ListIndex(int index);
  /// The chosen entry, empty before any choice.
  std::u16string Text() const;

  Event<> Click;
};

}  // namespace forms
