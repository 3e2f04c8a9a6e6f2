#include "editor/frmMain.h"
#include "layoutdata/LayoutFiles.h"
#include "layoutdata/Settings.h"
#include "layoutdata/Statements.h"
#include "platform/files/ProgramFolder.h"
#include "platform/process/Process.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"
#include "shared/mdWriteINI.h"
#include "shared/notice/frmSaved.h"

namespace levelled = layoutdata::levelled;
namespace settings = layoutdata::settings;
namespace statements = layoutdata::statements;

namespace {

std::u16string LayoutFile(std::u16string_view literal, std::int16_t level) {
  return files::programFolder()
      .append(literal)
      .append(runtime::toText(level))
      .append(levelled::kExtension);
}

}  // namespace

void frmMain::LoadLevels() {
  cbLevel.AddItem(u"1");
  cbLevel.AddItem(u"2");
  cbLevel.AddItem(u"3");
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
  txtName.Text(mdWriteINI::ReadINI(
      files::programFolder().append(settings::kTouchFile), settings::kSettings,
      std::u16string(settings::kScreen) + cbLevel.Text(), settings::kScreenDefault));
}

// The number isn't consulted: the box's text decides.
void frmMain::Changelevel(std::int16_t) {
  ClearTheForm();
  const std::u16string level = cbLevel.Text();
  if (level == u"1") {
    LoadIDintoGrid(statements::kLevel1);
    LoadDescriptionIntoButton();
  } else if (level == u"2") {
    LoadIDintoGrid(statements::kLevel2);
    LoadDescriptionIntoButton();
  } else if (level == u"3") {
    LoadIDintoGrid(statements::kLevel3);
    LoadDescriptionIntoButton();
  }
}

// The text colours and the key table stay: the ids of the level before remain until something
// overwrites them.
void frmMain::ClearTheForm() {
  for (auto& key : MyButton1) {
    key->caption(u"");
    key->backcolor(forms::kWhite);
    key->backcolordown(forms::kWhite);
    key->backcolorfocus(forms::kWhite);
    key->backcolorfocus(forms::kWhite);  // written twice, and wanted so
    key->backcolorover(forms::kWhite);
  }
}

void frmMain::LoadButtons(std::int16_t strScr) {
  const std::u16string path = LayoutFile(levelled::kRead, strScr);
  if (!FileSystem->FileExists(path)) return;
  files::InputFile file(path);  // a failure here is not trapped
  try {
    for (std::int16_t key = 0; key < MyButton1.count(); ++key) {
      const layoutdata::KeyLine line(file.lineInput());
      LoadKey(key, line);
      Grid1.TextMatrix(key, 1, runtime::trim(line.ProductId()));
    }
  } catch (const runtime::RunTimeError&) {
    // The first fault ends the reading: this key stays as far as it got, those behind it as they
    // were.
  }
}

void frmMain::SaveButtons() {
  const std::int16_t level = runtime::toInteger(cbLevel.Text());
  WriteLayoutFile(LayoutFile(levelled::kWrite, level));
  mdWriteINI::WriteINI(files::programFolder().append(settings::kTouchFile), settings::kSettings,
                       std::u16string(settings::kScreen) + runtime::toText(level),
                       runtime::trim(txtName.Text()));
  forms::DefaultInstance<frmSaved>::get()->ShowModal();
}

void frmMain::cmdSave_Click() {
  SaveButtons();
}

// What stays, on purpose: the ids in the key table, the text colours, the level's name, the current
// key and copy mode.
void frmMain::cmdResetAll_Click() {
  const std::u16string answer =
      runtime::toText(process::MsgBox(u"This will reset all the buttons. Are you sure?",
                                      process::kYesNo + process::kInformation, u"Reset"));
  if (runtime::toInteger(answer) == process::kNo) return;
  const std::int16_t level = runtime::toInteger(cbLevel.Text());
  const std::u16string path = LayoutFile(levelled::kDelete, level);
  if (FileSystem->FileExists(path)) files::kill(path);
  ClearTheForm();
}
