#pragma once

#include "platform/forms/Measures.h"

namespace support {

/// The design of a control, or of a button, with these bounds in twips.
template <class Design = forms::Design>
Design designOf(const char* name, int left, int top, int width, int height, int tabIndex = -1) {
  Design design;
  design.name = name;
  design.left = left;
  design.top = top;
  design.width = width;
  design.height = height;
  design.tabIndex = tabIndex;
  return design;
}

}  // namespace support
