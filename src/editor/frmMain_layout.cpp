#include "editor/frmMain.h"
#include "layoutdata/LayoutFile.h"
#include "layoutdata/Settings.h"
#include "platform/files/Kill.h"
#include "platform/files/ProgramFolder.h"
#include "platform/process/Process.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"
#include "shared/mdWriteINI.h"
#include "shared/notice/frmSaved.h"

namespace levelled = layoutdata::levelled;
namespace settings = layoutdata::settings;

void frmMain::LoadButtons(std::int16_t strScr) {
  const std::u16string path = layoutdata::levelFile(levelled::kRead, strScr);
  if (!FileSystem->FileExists(path)) return;
  layoutdata::LayoutReader file(path);  // outside of the try block: a failure to open is reported
  try {
    for (std::int16_t key = 0; key < MyButton1.count(); ++key) {
      const layoutdata::KeyLine line = file.next();
      LoadKey(key, line);
      Grid1.TextMatrix(key, 1, runtime::trim(line.ProductId()));
    }
  } catch (const runtime::RunTimeError&) {
    // The first fault ends the reading: this key keeps what was applied so far, later keys don't
    // change (contract).
  }
}

void frmMain::SaveButtons() {
  const std::int16_t level = runtime::toInteger(cbLevel.Text());
  WriteLayoutFile(layoutdata::levelFile(levelled::kWrite, level));
  mdWriteINI::WriteINI(settings::touchFile(), settings::kSettings,
                       std::u16string(settings::kScreen) + runtime::toText(level),
                       runtime::trim(txtName.Text()));
  forms::DefaultInstance<frmSaved>::get()->ShowModal();
}

void frmMain::cmdSave_Click() {
  SaveButtons();
}

// Doesn't reset the ids in the key table, the font colours, the level's name, the current key or
// copy mode (contract).
void frmMain::cmdResetAll_Click() {
  const std::u16string answer =
      runtime::toText(process::MsgBox(u"This will reset all the buttons. Are you sure?",
                                      process::kYesNo + process::kInformation, u"Reset"));
  if (runtime::toInteger(answer) == process::kNo) return;
  const std::int16_t level = runtime::toInteger(cbLevel.Text());
  const std::u16string path = layoutdata::levelFile(levelled::kDelete, level);
  if (FileSystem->FileExists(path)) files::kill(path);
  ClearTheForm();
}
