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
    Sync,    ///< the file or folder is flushed to the disk
    Rename,  ///< a finished temporary file is renamed to `path`
    Delete,
  };
  Kind kind = Kind::Read;
  const std::filesystem::path& path;  ///< the file or folder itself; for Rename the new name
  std::uint64_t offset = 0;           ///< of the first byte to read or write, else 0
  std::size_t size = 0;               ///< bytes to read or write, else 0
};

/// Called before each step. Returns how many of its bytes are allowed: with fewer than `size`, a
/// write fails there with DiskFull and a read ends there as at the end of the file. When it throws,
/// the step has no effect and passes the exception on.
using FaultSeam = std::function<std::size_t(const FileStep&)>;

/// Sets the function that is called before each step on any file; empty (the default) for none.
/// For tests and benchmarks only: the product sets none, and its other libraries can't include this
/// header.
void setFaultSeam(FaultSeam seam);

/// Number of the step's bytes that are allowed; all of them when no seam is set. For use inside
/// this library only.
std::size_t allowedBytes(const FileStep& step);

}  // namespace files
