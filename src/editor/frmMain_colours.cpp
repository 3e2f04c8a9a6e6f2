#include "editor/frmMain.h"
#include "platform/runtime/Conversion.h"

void frmMain::cmdSelCol_Click() {
  SelectButCol();
}

// Nobody asks how the dialog was closed: Cancel goes on with its colour (contract).
void frmMain::SelectButCol() {
  CommonDialog1.ShowColor();
  SetButtonColour(runtime::toText(CommonDialog1.Color()), CurrentKey);
  txtColour.Text(runtime::toText(CommonDialog1.Color()));
}
