#pragma once

#include <memory>

#include "platform/process/Host.h"

namespace forms {

class Form;

/// The toolkit's application: made once, before any screen. Where there is no display to open, it
/// says so on standard error and ends the process with status 1 before the toolkit is touched. The
/// toolkit gets no argument of the command line.
class Application {
 public:
  Application();
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Runs the event loop until the last screen is closed; gives the process's exit status.
  int run();

 private:
  friend class Form;
  /// Leaves `run` once no screen is shown.
  static void screenClosed();
  struct Loop;
  std::unique_ptr<Loop> loop_;
};

/// The product's host: real message boxes, the platform's colour dialog, the failure report,
/// programs that are really started, and an end that doesn't return.
std::unique_ptr<process::Host> makeHost();

}  // namespace forms
