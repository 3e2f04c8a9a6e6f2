#include <algorithm>

#include "editor/frmMain.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdWriteINI.h"

namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

void frmMain::LoadLevels() {
  for (const statements::Level& level : statements::kLevels) cbLevel.AddItem(level.name);
  cbLevel.ListIndex(0);
}

void frmMain::cbLevel_Click() {
  if (LoadGuard == kTrue) return;
  if (Check1.Value() == 1) {
    Changelevel(runtime::toInteger(cbLevel.Text()));
  } else {
    ClearTheForm();
    LoadButtons(runtime::toInteger(cbLevel.Text()));
  }
  txtName.Text(mdWriteINI::ReadINI(settings::touchFile(), settings::kSettings,
                                   std::u16string(settings::kScreen) + cbLevel.Text(),
                                   settings::kScreenDefault));
}

// `LevelNo` isn't used: the text of `cbLevel` decides (contract).
void frmMain::Changelevel(std::int16_t) {
  ClearTheForm();
  const auto level =
      std::ranges::find(statements::kLevels, cbLevel.Text(), &statements::Level::name);
  if (level == statements::kLevels.end()) return;
  LoadIDintoGrid(level->condition);
  LoadDescriptionIntoButton();
}

// The text colours and the key table stay: the ids of the previous level remain until something
// overwrites them (contract).
void frmMain::ClearTheForm() {
  for (auto& key : MyButton1) {
    key->caption(u"");
    key->backcolor(forms::kWhite);
    key->backcolordown(forms::kWhite);
    key->backcolorfocus(forms::kWhite);
    key->backcolorfocus(forms::kWhite);  // twice: contract
    key->backcolorover(forms::kWhite);
  }
}
