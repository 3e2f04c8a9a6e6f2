#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/files/seam/FaultSeam.h"

namespace support {

/// Intercepts the program's file operations during its lifetime, and makes steps fail.
class FileFaults {
 public:
  FileFaults() = default;
  ~FileFaults();
  FileFaults(const FileFaults&) = delete;
  FileFaults& operator=(const FileFaults&) = delete;

  /// Lets the changes before number `step` succeed (every operation but a read is a change; they
  /// count from 0). If change `step` is a write, it writes at most `bytes` bytes and raises
  /// DiskFull where it has more; any other change from `step` on raises DeviceIoError.
  void cutAtChange(int step, std::size_t bytes = 0);
  /// Makes every file appear to end at `offset`.
  void endFilesAt(std::size_t offset);

  /// Number of changes requested so far.
  int changes() const { return changes_; }

 private:
  std::size_t change(const files::FileStep& step);

  int cutAt_ = -1;
  std::size_t cutBytes_ = 0;
  int changes_ = 0;
};

/// Runs `act` in a copy of this process that is killed at change number `step`, before that change
/// begins. Returns true if it was killed, false if `act` made fewer changes and ended.
bool killedAtChange(int step, const std::function<void()>& act);

/// The number of the run-time error that `use` raises; 0 when it raises none.
int errorNumberOf(const std::function<void()>& use);
/// The run-time error that `use` raises, as "number: text"; empty when it raises none.
std::string failureOf(const std::function<void()>& use);

}  // namespace support
