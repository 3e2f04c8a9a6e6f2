#pragma once

namespace process {

/// Resets the state of `Process.h` after the program's end, so that the next test starts like a new
/// process. For tests only: the product's libraries can't include this header.
void resetEnded();

}  // namespace process
