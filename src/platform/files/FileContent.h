#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace files {

/// Size in bytes of the largest file that is read.
inline constexpr std::size_t kContentLimit = 64U << 20U;

/// All bytes of the file, nullopt where there is no such file or folder. Raises
/// PermissionDenied, PathFileAccess (not a file, or above `kContentLimit`), DeviceIoError.
std::optional<std::string> readContent(const std::filesystem::path& path);

/// Makes `bytes` the content of the file, creating it where it is missing, and returns when they
/// have reached the disk. The file never holds only a part of them: they go to a temporary file in
/// the same folder, which then replaces the file and has its permissions. A link stays a link: its
/// target is replaced. Only where the file can't be replaced are the bytes written in place. Raises
/// PathNotFound, PathFileAccess (read-only file, not writable), DiskFull, DeviceIoError.
void replaceContent(const std::filesystem::path& path, std::string_view bytes);

/// Replaces the file's bytes by the result of `change` on them; a missing file has none. When
/// several programs on one machine change a file at once, no change is lost. Raises what
/// `readContent` and `replaceContent` raise, what `change` raises, and PermissionDenied where
/// another program holds the folder for too long (see `FolderLock`).
void changeContent(const std::filesystem::path& path,
                   const std::function<std::string(std::string bytes)>& change);

}  // namespace files
