#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>

namespace files {

/// One step that the program is about to take on a file.
struct FileStep {
  enum class Kind {
    Read,
    Write,
    Sync,    ///< what was written so far to the file or folder is to reach the disk
    Rename,  ///< a finished temporary file takes the place of `path`
    Delete,
  };
  Kind kind;
  const std::filesystem::path& path;  ///< a temporary file's own where one is written
  std::uint64_t offset = 0;           ///< of the first byte to read or write, else 0
  std::size_t size = 0;               ///< bytes to read or write, else 0
};

/// Asked before each step. Gives how many bytes of it take place: fewer than `size` make a write
/// stop there with DiskFull and let a read come to the end of the file there. What it throws comes
/// out of the step, of which nothing has taken place then.
using FaultSeam = std::function<std::size_t(const FileStep&)>;

/// Puts a seam between the program and all its files; an empty one (the default) takes it off.
/// For tests only: the product sets none, and its libraries can't include this header.
void setFaultSeam(FaultSeam seam);

/// Bytes of the step that may take place; all of them where no seam is set. For the files of
/// `files`.
std::size_t allowedBytes(const FileStep& step);

}  // namespace files
