#include "shared/startup/Main.h"

#include "platform/files/ProgramFolder.h"
#include "platform/forms/Application.h"
#include "platform/forms/DesktopHost.h"
#include "platform/process/Host.h"
#include "platform/process/Process.h"
#include "platform/process/StandardStreams.h"

// Prepares the platform, runs the start-up procedure, then handles the screens' events until the
// program ends.
int main() {
  process::prepareStandardStreams();
  files::setProgramFile(files::startedProgram());
  forms::Application application;
  const auto host = forms::makeHost();
  process::setHost(*host);
  process::dispatch([] { mdMain::Main(); });
  return application.run();
}
