#pragma once

namespace process {

/// Resets the end of the process under a host that outlived it, so that the next test starts like a
/// new process. For tests only: the product's libraries can't include this header.
void resetEnded();

}  // namespace process
