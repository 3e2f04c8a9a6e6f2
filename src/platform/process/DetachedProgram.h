#pragma once

#include <filesystem>

namespace process {

/// Starts a program without arguments in its own folder, in a session of its own: nobody waits for
/// it, and it outlives this process. It inherits no signal that this process has changed. Raises
/// error 53 when there is no such file, 70 when it may not be run, 5 when it can't be.
void startDetached(const std::filesystem::path& program);

}  // namespace process
