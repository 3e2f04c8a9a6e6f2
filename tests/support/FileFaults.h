#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/files/seam/FaultSeam.h"

namespace support {

/// Stands in the seam between the program and its files while it lives, and lets steps fail.
class FileFaults {
 public:
  FileFaults() = default;
  ~FileFaults();
  FileFaults(const FileFaults&) = delete;
  FileFaults& operator=(const FileFaults&) = delete;

  /// From the `step`-th change on (all steps but reads, counted together from 0) nothing more
  /// reaches the disk: the first one is cut after `bytes` bytes, all later ones do nothing.
  void cutAtChange(int step, std::size_t bytes = 0);
  /// Reads come to the end of the file at `offset`.
  void endFilesAt(std::size_t offset);

  /// Changes asked for so far.
  int changes() const { return changes_; }

 private:
  std::size_t change(const files::FileStep& step);

  int cutAt_ = -1;
  std::size_t cutBytes_ = 0;
  int changes_ = 0;
};

/// Runs `act` in a copy of this process that is killed as it asks for its `step`-th change, before
/// anything of it has taken place. False when the copy came to an end of its own.
bool killedAtChange(int step, const std::function<void()>& act);

/// The number of the run-time error that comes out; 0 when none does.
int errorNumberOf(const std::function<void()>& use);

}  // namespace support
