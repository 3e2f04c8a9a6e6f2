#pragma once

#include "platform/forms/PictureBox.h"

namespace forms {

/// A frame without border and caption.
class Frame : public PictureBox {
 public:
  using PictureBox::PictureBox;
};

}  // namespace forms
