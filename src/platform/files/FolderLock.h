#pragma once

#include <chrono>
#include <filesystem>

namespace files {

/// Keeps other programs on this machine that take the same lock from changing files of the folder
/// meanwhile. The lock is on the folder, since a file that is replaced takes a lock on itself with
/// it. It is advisory, and is not passed on to other hosts of a file server.
class FolderLock {
 public:
  /// How long the lock is waited for where nothing else is said.
  static constexpr std::chrono::milliseconds kWait{5000};

  /// Waits for the lock up to `wait`, then raises a FileError, Held. A folder that is missing, or
  /// that can't be locked, is not locked: what is done to its files next tells what is wrong.
  explicit FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait = kWait);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

}  // namespace files
