#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace files {

/// `readContent` refuses larger files; in bytes.
inline constexpr std::size_t kContentLimit = 64U << 20U;

/// All bytes of the file, nullopt where there is no such file or folder. Raises
/// PermissionDenied, PathFileAccess (not a file, or above `kContentLimit`), DeviceIoError.
std::optional<std::string> readContent(const std::filesystem::path& path);

/// Replaces the file's bytes by the result of `change` on them, and waits until they are on the
/// disk. A missing file has no bytes, and is created. When several programs on one machine change a
/// file at once, no change is lost. The replacement is atomic: the bytes go to a temporary file in
/// the same folder, which gets the old file's owner and permissions and is renamed over it. The
/// target of a symbolic link is replaced, not the link. A file that can't be replaced (several hard
/// links, folder not writable) is overwritten in place, not atomically. Raises PathNotFound,
/// PathFileAccess (read-only file, not writable), DiskFull, DeviceIoError, what `readContent` and
/// `change` raise, and PermissionDenied where another program holds the folder for too long (see
/// `FolderLock`).
void changeContent(const std::filesystem::path& path,
                   const std::function<std::string(std::string bytes)>& change);

}  // namespace files
