#pragma once

#include <functional>
#include <vector>

namespace support {

/// Runs each function in a copy of this process, all at the same time. Returns what they return
/// (0 to 255), each as its copy's exit status; -1 for a copy that a signal ended. A copy that hangs
/// is ended by a signal after five minutes.
std::vector<int> statusesOfCopies(const std::vector<std::function<int()>>& acts);

/// The same for one function.
int statusOfCopy(const std::function<int()>& act);

}  // namespace support
