#pragma once

#include "platform/forms/Measures.h"

namespace MSComDlg {

/// The common dialog, which the system uses to choose a colour. It has no widget on the screen.
class CommonDialog {
 public:
  /// Shows the colour dialog, with no colour preselected, and returns when the user closes it.
  /// Cancel leaves `Color` as it was.
  void ShowColor();
  /// The colour last confirmed in this object, 0x00BBGGRR; 0 before the first.
  forms::Colour Color() const { return color_; }

 private:
  forms::Colour color_ = 0;
};

}  // namespace MSComDlg
