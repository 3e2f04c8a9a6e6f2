#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

/// The path of this process's program file as the kernel started it, also after a search in PATH;
/// doesn't use `argv[0]`. Empty when the kernel doesn't provide it.
std::filesystem::path startedProgram();

/// Sets the path by which the program was started. It is made absolute; a link to the program file
/// is not followed.
void setProgramFile(const std::filesystem::path& started);

/// The folder of that path, without a trailing separator. Computed at each call.
std::u16string programFolder();

/// Converts a path as the screens write it (the program folder joined with literals that begin with
/// a backslash) to a path of the operating system. Each name below the program folder is looked up
/// ignoring case (see `findEntry`); a name that doesn't exist yet stays as written. Doubled
/// separators count as one.
std::filesystem::path resolve(std::u16string_view path);

/// The path of the folder's entry with that name, ignoring case. Among several matches the first
/// in byte order is returned, not an exact match, so that all spellings find the same file. Without
/// a match, or without the folder, the path has the name as written.
std::filesystem::path findEntry(const std::filesystem::path& folder, std::u16string_view name);

}  // namespace files
