#pragma once

#include <filesystem>

namespace process {

/// Starts a program without arguments in its own folder and in a session of its own. Doesn't wait
/// for it; it outlives this process. It inherits no signal action that this process has changed.
/// Raises FileNotFound when there is no such file, PermissionDenied when it may not be run,
/// InvalidProcedureCall when it can't be run.
void startDetached(const std::filesystem::path& program);

}  // namespace process
