#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace profile {

/// Copies the value of `key` in `section` into a buffer of `size` bytes, as far as it holds it with
/// a terminator, and returns the value (at most size - 1 bytes); the default where the file, the
/// section or the key is absent. Surrounding blanks and one pair of quotes are dropped. Names match
/// without regard to case. All texts are bytes of the machine's code page. `file` is a path of the
/// system; an empty one finds no file. A file that can't be read has no keys.
std::string GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                     std::string_view defaultValue, std::size_t size,
                                     std::u16string_view file);

/// Sets `key` in `section` and keeps everything else in the file as it is, byte for byte. Creates
/// file and section when they are absent. Of programs on one machine that write one file at once,
/// none loses the value of another. Returns true on success, false for a file that can't be written
/// or is in UTF-16; never raises.
bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                std::string_view value, std::u16string_view file);

}  // namespace profile
