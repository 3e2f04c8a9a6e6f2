#pragma once

#include <memory>

namespace forms {

/// The toolkit's application, created once, before any screen. Where there is no display to open,
/// it writes so to standard error and ends the process with status 1 before it starts the toolkit.
/// The toolkit gets no argument of the command line.
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
