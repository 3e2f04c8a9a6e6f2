#include "keyeditor/KeyEditor.h"
#include "platform/runtime/Conversion.h"

namespace {
const std::u16string kWhiteText = u"16777215";
const std::u16string kButtonTextColourText = u"-2147483630";
}  // namespace

void KeyEditor::SetButtonColour(const std::u16string& strColour, std::int16_t i) {
  if (strColour.empty()) return;
  MyButton1(i).backcolor(runtime::toLong(strColour));
  MyButton1(i).backcolordown(runtime::toLong(strColour));
  MyButton1(i).backcolorfocus(runtime::toLong(strColour));
  MyButton1(i).backcolorfocus(runtime::toLong(strColour));  // twice: contract
  MyButton1(i).backcolorover(runtime::toLong(strColour));
}

void KeyEditor::SetFontButtonColour(const std::u16string& strColour, std::int16_t i) {
  if (strColour.empty()) return;
  MyButton1(i).forecolor(runtime::toLong(strColour));
  MyButton1(i).forecolordown(runtime::toLong(strColour));
  MyButton1(i).forecolorfocus(runtime::toLong(strColour));
  MyButton1(i).forecolorover(runtime::toLong(strColour));
}

void KeyEditor::cmdSelCol_Click() {
  SelectButCol();
}

// After Cancel the key gets the colour that the dialog still holds; likewise in
// cmdFontColour_Click (contract).
void KeyEditor::SelectButCol() {
  CommonDialog1.ShowColor();
  SetButtonColour(runtime::toText(CommonDialog1.Color()), CurrentKey);
  txtColour.Text(runtime::toText(CommonDialog1.Color()));
}

void KeyEditor::cmdFontColour_Click() {
  CommonDialog1.ShowColor();
  SetFontButtonColour(runtime::toText(CommonDialog1.Color()), CurrentKey);
  txtFontColour.Text(runtime::toText(CommonDialog1.Color()));
}

void KeyEditor::cmdResetColor_Click() {
  txtColour.Text(kWhiteText);
  SetButtonColour(txtColour.Text(), CurrentKey);
  txtFontColour.Text(kButtonTextColourText);
  SetFontButtonColour(txtFontColour.Text(), CurrentKey);
  txtColour.Text(u"");
  txtFontColour.Text(u"");
  MyButton1(CurrentKey).caption(u"");
  Grid1.TextMatrix(CurrentKey, 1, u"");
}
