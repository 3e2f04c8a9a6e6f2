#pragma once

#include <memory>
#include <string_view>

namespace files {

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

  /// Writes one line in windows-1252, ended by CR LF. Raises DiskFull, DeviceIoError,
  /// and BadFileMode once the file is closed.
  void print(std::u16string_view line);
  /// Closes the file. Raises DeviceIoError or DiskFull, also for a failure that the system reports
  /// only now.
  void close();

 private:
  struct Bytes;
  std::unique_ptr<Bytes> bytes_;
};

}  // namespace files
