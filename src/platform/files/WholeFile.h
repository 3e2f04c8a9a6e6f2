#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace files {

/// Size in bytes beyond which a file is not read as a whole.
inline constexpr std::size_t kWholeFileLimit = 64U << 20U;

/// All bytes of the file, nullopt where there is no such file or folder. Raises
/// PermissionDenied, PathFileAccess (not a file, or above `kWholeFileLimit`), DeviceIoError.
std::optional<std::string> readWhole(const std::filesystem::path& path);

/// Makes `bytes` the content of the file, created when it is missing, and returns when they have
/// reached the disk. The file never holds half of them: they go to a temporary file in the same
/// folder, which then replaces the file and keeps its permissions; a link stays one, and what it
/// leads to is replaced. Only where the folder takes no new file the bytes are written in place.
/// Raises PathNotFound, PathFileAccess (read-only file, not writable), DiskFull, DeviceIoError.
void replaceWhole(const std::filesystem::path& path, std::string_view bytes);

/// Replaces the file's bytes by what `change` makes of them; a missing file has none. Of programs
/// on one machine that change one file at once, none loses the change of another. Raises what
/// `readWhole` and `replaceWhole` raise, what `change` raises, and PermissionDenied where another
/// program holds the folder for too long (see `FolderLock`).
void changeWhole(const std::filesystem::path& path,
                 const std::function<std::string(std::string bytes)>& change);

}  // namespace files
