#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

/// The path by which the system started this process: also the one that was found on the search
/// path, and whatever the program was told about its name. Empty where the system doesn't say.
std::filesystem::path startedProgram();

/// Tells by which path the program was started; it is made absolute, and a link to the program file
/// is not followed.
void setProgramFile(const std::filesystem::path& started);

/// The folder of that path, without a trailing separator. Asked for afresh at each use.
std::u16string programFolder();

/// A path of the system, that is the program folder joined with literals that begin with a
/// backslash, as a path of the host. Each name below the program folder is found without regard to
/// case (see `findEntry`), and one that is not there yet stays as written. Doubled separators count
/// once.
std::filesystem::path resolve(std::u16string_view path);

/// The folder's entry of that name, found without regard to case: of several the first in byte
/// order, since an exact match would depend on the spelling that a caller happens to use. The name
/// as written where there is none, or no such folder.
std::filesystem::path findEntry(const std::filesystem::path& folder, std::u16string_view name);

}  // namespace files
