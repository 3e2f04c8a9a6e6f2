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
    Rename,  ///< a finished temporary file is renamed to `path`
    Delete,
  };
  Kind kind;
  const std::filesystem::path& path;  ///< of the temporary file where one is written
  std::uint64_t offset = 0;           ///< of the first byte to read or write, else 0
  std::size_t size = 0;               ///< bytes to read or write, else 0
};

/// Called before each step. Returns how many of its bytes are allowed: with fewer than `size` a
/// write stops there with DiskFull, and a read reaches the end of the file there. What it throws
/// comes out of the step, which then has had no effect.
using FaultSeam = std::function<std::size_t(const FileStep&)>;

/// Sets the function that is called before each step on any file; empty (the default) for none.
/// For tests only: the product sets none, and its libraries can't include this header.
void setFaultSeam(FaultSeam seam);

/// Number of the step's bytes that are allowed; all of them where no seam is set. For this
/// library's files.
std::size_t allowedBytes(const FileStep& step);

}  // namespace files
