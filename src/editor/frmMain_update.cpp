#include "editor/frmMain.h"
#include "layoutdata/Settings.h"
#include "platform/files/ProgramFolder.h"
#include "platform/process/Process.h"
#include "platform/profile/SettingsStore.h"

namespace settings = layoutdata::settings;

namespace {
constexpr std::u16string_view kCommunicationsProgram = u"\\tavenor_comms.exe";
}

// Both settings are written before the program starts, and stay if it can't be started (contract).
void frmMain::cmdUpdate_Click() {
  profile::SaveSetting(settings::kUpdate.application, settings::kUpdate.section,
                       settings::kUpdate.key, settings::kUpdateProgramData);
  profile::SaveSetting(settings::kFormToOpen.application, settings::kFormToOpen.section,
                       settings::kFormToOpen.key, settings::kFormToOpenUpdatePos);
  process::Shell(files::programFolder().append(kCommunicationsProgram),
                 process::WindowStyle::MinimizedFocus);
}
