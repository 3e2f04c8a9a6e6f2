#pragma once

#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A text that the user can't change. It is painted literally: no character is a mnemonic or
/// markup.
class Label : public Control {
 public:
  Label(Container& container, const Design& design);
  const std::u16string& Caption() const { return caption_; }
  void Caption(std::u16string_view caption);

 private:
  std::u16string caption_;
};

}  // namespace forms
