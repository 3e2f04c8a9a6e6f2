#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

/// The path by which the system started this process, also where it was found on the search path;
/// independent of the program's first argument. Empty where the system doesn't tell it.
std::filesystem::path startedProgram();

/// Sets the path by which the program was started. It is made absolute; a link to the program file
/// is not followed.
void setProgramFile(const std::filesystem::path& started);

/// The folder of that path, without a trailing separator. Computed at each call.
std::u16string programFolder();

/// Turns a path of the system (the program folder joined with literals that begin with a backslash)
/// into a path of the host. Each name below the program folder is found without regard to case (see
/// `findEntry`), and one that doesn't exist yet stays as written. Doubled separators count as one.
std::filesystem::path resolve(std::u16string_view path);

/// The path of the folder's entry of that name, found without regard to case. Of several it is the
/// first in byte order: preferring an exact match would make the result depend on the caller's
/// spelling. Where there is no such entry or folder, the path has the name as written.
std::filesystem::path findEntry(const std::filesystem::path& folder, std::u16string_view name);

}  // namespace files
