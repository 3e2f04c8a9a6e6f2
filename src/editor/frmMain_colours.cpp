#include "editor/frmMain.h"
#include "platform/runtime/Conversion.h"

void frmMain::cmdSelCol_Click() {
  SelectButCol();
}

// After Cancel the key gets the colour that the dialog still holds (contract).
void frmMain::SelectButCol() {
  CommonDialog1.ShowColor();
  SetButtonColour(runtime::toText(CommonDialog1.Color()), CurrentKey);
  txtColour.Text(runtime::toText(CommonDialog1.Color()));
}
