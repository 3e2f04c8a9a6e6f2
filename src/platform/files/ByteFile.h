#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/files/FileError.h"

namespace files {

/// A file with random access and an advisory lock, shared or exclusive, that all objects of this
/// class respect. The lock covers one byte far beyond the file's end, so that other programs can
/// still lock and use the content. It is a Linux open-file-description lock: two objects exclude
/// each other inside one process too, and a file server passes the lock on to other hosts.
class ByteFile {
 public:
  enum class Access {
    ReadOnly,
    ReadWrite,
    Create,  ///< read and write; the file is created, or emptied where it exists
    Output,  ///< write only; the file is created, or emptied where it exists
    New,     ///< write only; the file is created and must not exist yet
  };

  /// Opens the file at a path of the host (see `resolve`).
  /// Raises a FileError: Missing, FolderMissing, NoPermission, NotAFile. Any access
  /// but ReadOnly fails for a file that nobody has permission to write, even for the superuser.
  ByteFile(const std::filesystem::path& path, Access access);
  ~ByteFile();
  ByteFile(const ByteFile&) = delete;
  ByteFile& operator=(const ByteFile&) = delete;

  /// The file descriptor.
  int descriptor() const { return descriptor_; }

  /// Bytes in the file now. Raises DeviceIoError.
  std::uint64_t size() const;
  /// Reads from `offset` until `bytes` is full or the file ends; returns the number of bytes read.
  /// Raises DeviceIoError.
  std::size_t readAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  /// Writes all of `bytes` at `offset`, making the file longer where needed.
  /// Raises DiskFull, DeviceIoError, or PermissionDenied on a file opened read-only.
  void writeAt(std::uint64_t offset, std::span<const std::uint8_t> bytes);
  /// Truncates the file. Raises DeviceIoError, or PermissionDenied on a file opened read-only.
  void truncate(std::uint64_t size);
  /// Closes the file. Raises DeviceIoError or DiskFull, also for a failure of an earlier write that
  /// the system reports only now.
  void close();
  /// True when the path no longer names this file: it was deleted, or another was renamed over it.
  bool isReplaced() const;
  /// Flushes written data to the disk and waits for it. Raises DeviceIoError or DiskFull.
  void sync();

  /// The default time to wait for a lock.
  static constexpr std::chrono::milliseconds kLockWait{5000};

  /// Takes the shared lock, or downgrades this object's exclusive lock to it. While another object
  /// holds the exclusive lock, or another program holds an exclusive lock on part of the content,
  /// waits up to `wait`, then raises FileError (Held). After a failure this object keeps the lock
  /// that it had.
  void lockShared(std::chrono::milliseconds wait = kLockWait);
  /// Takes the exclusive lock, with the same rules. Needs ReadWrite access. A shared lock is kept
  /// during the wait, so two objects that both hold one and want the exclusive lock block each
  /// other: release it first.
  void lockExclusive(std::chrono::milliseconds wait = kLockWait);
  /// Releases the lock; closing the file does so too.
  void unlock() noexcept;

 private:
  void lock(short type, std::chrono::milliseconds wait);
  bool tryLock(short type) const;
  bool isContentLocked() const;

  [[noreturn]] void fail(int systemError) const;

  std::filesystem::path path_;
  Access access_;
  int descriptor_ = -1;
};

}  // namespace files
