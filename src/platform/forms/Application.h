#pragma once

#include <memory>

namespace forms {

/// The toolkit's application, created once, before any screen. When no display is available, the
/// constructor reports that on standard error and ends the process with status 1. Command line
/// arguments are not passed to the toolkit.
class Application {
 public:
  Application();
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Runs the event loop until the last screen is closed; returns the process's exit status.
  int run();

 private:
  struct Toolkit;
  std::unique_ptr<Toolkit> toolkit_;
};

}  // namespace forms
