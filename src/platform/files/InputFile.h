#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace files {

/// A text file opened for input, read line by line and decoded from windows-1252.
class InputFile {
 public:
  /// Longest line that is read, in characters.
  static constexpr std::size_t kLineLimit = 4U << 20U;

  /// Raises FileNotFound, PathNotFound, PermissionDenied, PathFileAccess (not a file).
  explicit InputFile(std::u16string_view path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// The next line, without the CR or CR LF that ends it; a lone LF is an ordinary character, as
  /// are NUL and 0x1A (contract). Raises InputPastEnd past the end of the file, DeviceIoError, and
  /// OutOfMemory for a line of more than kLineLimit characters.
  std::u16string lineInput();

 private:
  struct Bytes;
  std::unique_ptr<Bytes> bytes_;
};

}  // namespace files
