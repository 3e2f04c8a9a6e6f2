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

/// A text file opened for output. Opening creates or empties it; each line is written without
/// buffering (contract).
class OutputFile {
 public:
  /// Raises PathNotFound, PathFileAccess (not writable, not a file).
  explicit OutputFile(std::u16string_view path);
  /// Closes the file where it is still open and ignores a failure; `close` raises it.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Writes one line in the machine's code page, ended by CR LF. Raises DiskFull, DeviceIoError,
  /// and BadFileMode once the file is closed.
  void print(std::u16string_view line);
  /// Closes the file. Raises DeviceIoError or DiskFull, also for a failure that the system reports
  /// only now.
  void close();

 private:
  struct Bytes;
  std::unique_ptr<Bytes> bytes_;
};

/// Deletes a file. Raises FileNotFound or PathNotFound when it is missing, PathFileAccess when it
/// can't be deleted: a folder, a file that is read-only for this user, a folder that may not be
/// changed.
void kill(std::u16string_view path);

}  // namespace files

namespace Scripting {

/// The one file-system query that the screens make.
class FileSystemObject {
 public:
  /// True for a file (not a folder) that exists at the path.
  bool FileExists(std::u16string_view path) const;
};

}  // namespace Scripting
