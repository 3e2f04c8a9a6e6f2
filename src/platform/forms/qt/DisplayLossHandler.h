#pragma once

namespace forms::qt {

/// Ends the process with status 1 when the toolkit crashes because the X server has gone: during a
/// drag the toolkit uses replies without checking that they arrived. Must live as long as the
/// application object.
class DisplayLossHandler {
 public:
  DisplayLossHandler();
  ~DisplayLossHandler();
  DisplayLossHandler(const DisplayLossHandler&) = delete;
  DisplayLossHandler& operator=(const DisplayLossHandler&) = delete;
};

}  // namespace forms::qt
