#pragma once

#include <functional>
#include <map>

namespace process {

/// State of this process's end. For use inside this library only.
struct ProcessEnd {
  bool ending = false;  ///< the end has begun: nothing is dispatched any more
  bool ended = false;   ///< `Host::endProcess` has returned, which it does only in tests
  std::map<int, std::function<void()>> loopExits;  ///< by registration: exits from modal loops
  int nextLoopExit = 0;
};
ProcessEnd& processEnd();

/// Resets the state of `Process.h` after the program's end, so that the next test starts like a new
/// process. For tests, fuzz targets and benchmarks only: the product's other libraries can't
/// include this header.
void resetEnded();

}  // namespace process
