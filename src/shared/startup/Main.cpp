#include "shared/startup/Main.h"

#include "editor/frmMain.h"
#include "largeeditor/frmMainBig.h"
#include "layoutdata/Settings.h"
#include "platform/files/ProgramFolder.h"
#include "platform/forms/Form.h"
#include "platform/profile/SettingsStore.h"
#include "shared/mdOpenDatabase.h"
#include "shared/mdWriteINI.h"

namespace settings = layoutdata::settings;

namespace mdMain {

void Main() {
  mdOpenDatabase::StoreName = profile::GetSetting(
      settings::kStoreName.application, settings::kStoreName.section, settings::kStoreName.key);

  // A read without a file returns the default; nothing uses it (contract).
  const std::u16string source = files::programFolder() + u"\\stores\\" + mdOpenDatabase::StoreName;
  mdOpenDatabase::DatabaseSource = mdWriteINI::ReadINI(mdOpenDatabase::IniFile, settings::kDatabase,
                                                       settings::kDbSource, source);

  mdOpenDatabase::StoreFolder = files::programFolder() + u"\\Stores\\" + mdOpenDatabase::StoreName;

  const std::u16string large = mdWriteINI::ReadINI(
      settings::posFile(), settings::kGeneral, settings::kLoadLarge, settings::kLoadLargeDefault);
  if (large == u"0")
    forms::DefaultInstance<frmMain>::get()->Show();
  else
    forms::DefaultInstance<frmMainBig>::get()->Show();
}

}  // namespace mdMain
