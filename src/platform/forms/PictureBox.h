#pragma once

#include "platform/forms/Control.h"

namespace forms {

/// A picture box: a plain area of its back colour that holds other controls.
class PictureBox : public Control, public Container {
 public:
  PictureBox(Container& container, const Design& design);

 protected:
  QWidget* client() const override { return widget(); }
  Form& form() override { return screen(); }
  Colour backColour() const override { return backColour_; }

 private:
  Colour backColour_;
};

}  // namespace forms
