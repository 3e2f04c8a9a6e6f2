#pragma once

#include <filesystem>

namespace process {

/// Starts a program without arguments in its own folder, in a session of its own: nobody waits for
/// it, and it outlives this process. It inherits no signal that this process has changed. Raises
/// FileNotFound when there is no such file, PermissionDenied when it may not be run,
/// InvalidProcedureCall when it can't be.
void startDetached(const std::filesystem::path& program);

}  // namespace process
