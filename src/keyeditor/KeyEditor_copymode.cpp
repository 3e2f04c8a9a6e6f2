#include "keyeditor/KeyEditor.h"
#include "platform/runtime/Conversion.h"

namespace {
constexpr forms::Colour kRed = 255;
}

void KeyEditor::cmdCopy_Click() {
  if (CopyMode != kTrue) {
    CopyBackColour = runtime::toText(MyButton1(CurrentKey).backcolor());
    CopyFontColour = runtime::toText(MyButton1(CurrentKey).forecolor());
    CopyMode = kTrue;
    cmdCopy.caption(u"STOP COPY");
    cmdCopy.backcolor(kRed);
    cmdCopy.forecolor(forms::kWhite);
    return;
  }
  CopyBackColour.clear();
  CopyFontColour.clear();
  cmdCopy.caption(u"Copy Button Settings");
  CopyMode = kFalse;
  // White with black text, not the colours that it had before its first use (contract).
  cmdCopy.backcolor(forms::kWhite);
  cmdCopy.forecolor(forms::kBlack);
}
