#pragma once

#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A drop-down list, drawn in the window colours. The user selects an entry with a click or a key
/// and can't type text; the mouse wheel over the closed list changes nothing.
class ComboBox : public Control {
 public:
  ComboBox(Container& container, const Design& design);
  void AddItem(std::u16string_view entry);
  int ListCount() const;
  /// -1: nothing chosen.
  int ListIndex() const;
  /// Selects an entry (-1: none) and always raises `Click`, nested in this call, even when the
  /// entry is already selected. An index outside the list raises InvalidPropertyValue.
  void ListIndex(int index);
  /// The chosen entry, empty before any choice.
  std::u16string Text() const;

  Event<> Click;
};

}  // namespace forms
