#pragma once

#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A one-line text box, drawn in the window colours. Typed and set text is cut to `maxLength`
/// characters (0: no limit). Line breaks of a pasted text become blanks; nothing can be dropped on
/// it.
class TextBox : public Control {
 public:
  TextBox(Container& container, const Design& design, int maxLength = 0);
  std::u16string Text() const;
  void Text(std::u16string_view text);
};

}  // namespace forms
