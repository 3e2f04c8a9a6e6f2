#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace profile {

/// Returns the value of `key` in `section`, cut to what a buffer of `size` bytes holds with a
/// terminator (size - 1 bytes); the default where the file, the section or the key is absent.
/// Surrounding blanks and one pair of quotes are dropped. Names match without regard to case. All
/// texts are bytes of windows-1252. `file` is a path as `files::resolve` takes it; an empty one
/// names no file. A file that can't be read is treated as one without keys.
std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                     std::string_view defaultValue, std::size_t size,
                                     std::u16string_view file);

/// Sets `key` in `section` and keeps everything else in the file as it is, byte for byte. Creates
/// file and section when they are absent. When several programs on one machine write one file at
/// once, no value is lost. Returns true on success, false for a file that can't be written or is in
/// UTF-16; never raises.
bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                std::string_view value, std::u16string_view file);

}  // namespace profile
