#pragma once

namespace process {

/// Forgets that the process was ended under a host that outlived it, so that the next test begins
/// like a new process. For tests only: the product's libraries can't include this header.
void resetEnded();

}  // namespace process
