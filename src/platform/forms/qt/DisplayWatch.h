#pragma once

namespace forms::qt {

/// Ends the process with status 1 where the toolkit crashes because the X server has gone: in a
/// drag it reads replies without asking whether they came. To live as long as the application.
class DisplayWatch {
 public:
  DisplayWatch();
  ~DisplayWatch();
  DisplayWatch(const DisplayWatch&) = delete;
  DisplayWatch& operator=(const DisplayWatch&) = delete;
};

}  // namespace forms::qt
