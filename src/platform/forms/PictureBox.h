#pragma once

#include "platform/forms/Control.h"

namespace forms {

/// A picture box, or a frame without border and caption: a plain area of its back colour that holds
/// other controls.
class PictureBox : public Control, public Container {
 public:
  PictureBox(Container& container, const Design& design);

  QWidget* client() const override { return widget(); }
  qt::Window& window() const override { return screen(); }
  Colour backColour() const override { return backColour_; }

 private:
  Colour backColour_;
};

}  // namespace forms
