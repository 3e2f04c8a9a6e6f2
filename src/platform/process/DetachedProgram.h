#pragma once

#include <filesystem>

namespace process {

/// Starts a program without arguments, in its own folder and its own session, with the signal
/// actions that this process inherited. Doesn't wait for it; the program outlives this process.
/// Raises FileNotFound when there is no such file, PermissionDenied when the user may not run it,
/// InvalidProcedureCall for any other failure to start it.
void startDetached(const std::filesystem::path& program);

}  // namespace process
