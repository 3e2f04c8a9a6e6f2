#pragma once

#include <chrono>
#include <filesystem>

namespace files {

/// An advisory lock on a folder, held while this object exists, for programs on one machine that
/// replace files in it. It isn't on a file, since that lock would be lost when the file is
/// replaced. A file server doesn't pass it on to other hosts.
class FolderLock {
 public:
  /// The default time to wait for the lock.
  static constexpr std::chrono::milliseconds kWait{5000};

  /// Waits for the lock up to `wait`, then raises FileError (Held). Does nothing for a folder that
  /// is missing or can't be locked: the next operation on its files reports why.
  explicit FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait = kWait);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace files
