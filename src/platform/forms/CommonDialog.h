#pragma once

#include "platform/forms/Measures.h"

namespace MSComDlg {

/// The common dialog; the screens use only its colour dialog. It has no widget on the screen.
class CommonDialog {
 public:
  /// Shows the colour dialog, with no colour preselected, and returns when the user closes it.
  /// Cancel leaves `Color` as it was.
  void ShowColor();
  /// The colour that the user last confirmed, 0x00BBGGRR; 0 before that.
  forms::Colour Color() const { return color_; }

 private:
  forms::Colour color_ = 0;
};

}  // namespace MSComDlg
