#include "editor/frmMain.h"

#include "editor/frmMain_design.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/profile/SettingsStore.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdWriteINI.h"

namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

frmMain::frmMain()
    : KeyEditor(frmMain_design::kCommon),
      cmdResetAll(*this, frmMain_design::kCmdResetAll),
      cmdUpdate(*this, frmMain_design::kCmdUpdate),
      Check1(*this, frmMain_design::kCheck1),
      chkBarcode(*this, frmMain_design::kChkBarcode),
      lblLevel(*this, frmMain_design::kLblLevel),
      cbLevel(*this, frmMain_design::kCbLevel),
      Label5(*this, frmMain_design::kLabel5),
      txtName(*this, frmMain_design::kTxtName, frmMain_design::kLevelNameLength),
      Label2(*this, frmMain_design::kLabel2),
      cbDept(*this, frmMain_design::kCbDept),
      Label1(*this, frmMain_design::kLabel1),
      Label3(*this, frmMain_design::kLabel3) {
  for (std::int16_t i = 0; i < MyButton1.count(); ++i)
    MyButton1(i).DblClick = [this, i] { MyButton1_DblClick(i); };
  Check1.Click = [this] { Check1_Click(); };
  chkBarcode.Click = [this] { chkBarcode_Click(); };
  cbLevel.Click = [this] { cbLevel_Click(); };
  cbDept.Click = [this] { cbDept_Click(); };
  cmdResetAll.Click = [this] { cmdResetAll_Click(); };
  cmdUpdate.Click = [this] { cmdUpdate_Click(); };
}

void frmMain::Form_Load() {
  LoadGuard = kTrue;
  LoadDetailsIntoGrid();
  LoadGuard = kFalse;
}

void frmMain::LoadDetailsIntoGrid() {
  chkBarcode.Value(runtime::toInteger(
      profile::GetSetting(settings::kHideBarcode.application, settings::kHideBarcode.section,
                          settings::kHideBarcode.key, settings::kHideBarcodeDefault)));
  const std::u16string autofill = mdWriteINI::ReadINI(
      settings::touchFile(), settings::kSettings, settings::kAutofill, settings::kAutofillDefault);
  if (autofill == u"0") {
    Check1.Value(0);
    LoadLevels();
    LoadCombo();
    LoadGrid();
    LoadList(u"");
    LoadButtons(runtime::toInteger(cbLevel.Text()));
    List1.OLEDropMode(forms::kDropManual);
    MakeKeysDropTargets();
  } else {
    Check1.Value(1);
    Setlabels(false);
    lblLevel.Visible(true);
    cbLevel.Visible(true);
    LoadLevels();
    ArrangeButtons();
    LoadIDintoGrid(statements::kLevels.front().condition);
    LoadDescriptionIntoButton();
    LoadButtons(runtime::toInteger(cbLevel.Text()));
  }
}
