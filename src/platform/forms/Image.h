#pragma once

#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A picture.
class Image : public Control {
 public:
  /// `resource` names a picture that is built into the program: "tick".
  Image(Container& container, const Design& design, std::string_view resource);
};

}  // namespace forms
