#pragma once

namespace forms::qt {

/// Ends the process with status 1 where the toolkit crashes because the X server has gone: in a
/// drag it reads replies without a check that they have arrived. To exist as long as the
/// application.
class DisplayWatch {
 public:
  DisplayWatch();
  ~DisplayWatch();
  DisplayWatch(const DisplayWatch&) = delete;
  DisplayWatch& operator=(const DisplayWatch&) = delete;
};

}  // namespace forms::qt
