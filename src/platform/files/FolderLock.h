#pragma once

#include <chrono>
#include <filesystem>

namespace files {

/// Keeps other programs on this machine that take the same lock from changing files of the folder
/// meanwhile. The lock is on the folder, since a lock on a file is lost when the file is replaced.
/// It is advisory, and a file server does not pass it on to other hosts.
class FolderLock {
 public:
  /// The default time to wait for the lock.
  static constexpr std::chrono::milliseconds kWait{5000};

  /// Waits for the lock up to `wait`, then raises a FileError, Held. A folder that is missing, or
  /// that can't be locked, is not locked: the next operation on its files raises the reason.
  explicit FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait = kWait);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace files
