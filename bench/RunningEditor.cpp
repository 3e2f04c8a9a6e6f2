#include "RunningEditor.h"

#include <cstdlib>

#include "platform/files/ProgramFolder.h"
#include "platform/process/Process.h"
#include "shared/startup/Main.h"

namespace bench {

RunningEditor::Environment::Environment(const std::filesystem::path& shop) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("XDG_CONFIG_HOME", shop.c_str(), 1);
  files::setProgramFile(shop / "keystrand");
}

void RunningEditor::start() {
  process::dispatch([] { mdMain::Main(); });
  settle();
}

void pick(QComboBox& box, int entry) {
  box.setCurrentIndex(entry);
  box.activated(entry);
}

void settle() {
  QCoreApplication::processEvents();
}

}  // namespace bench
