#pragma once

#include <cstdint>

#include "platform/forms/Control.h"

namespace forms {

/// A check box with the values 0, 1 and 2 (greyed); any other value raises InvalidPropertyValue.
class CheckBox : public Control {
 public:
  CheckBox(Container& container, const Design& design);
  std::int16_t Value() const { return value_; }
  /// Raises `Click`, nested in this call, when the value changes.
  void Value(std::int16_t value);

  Event<> Click;

 private:
  std::int16_t value_ = 0;
};

}  // namespace forms
