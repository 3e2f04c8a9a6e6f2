#include "platform/files/ByteFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "platform/files/ReadWatch.h"
#include "platform/files/seam/FaultSeam.h"

namespace files {
namespace {

using runtime::ErrorNumber;
using Access = ByteFile::Access;

int openFlags(Access access) {
  // Opening never waits for the other end of a pipe, and started programs don't inherit the file.
  constexpr int kCommonFlags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  switch (access) {
    case Access::ReadOnly:
      return kCommonFlags | O_RDONLY;
    case Access::ReadWrite:
      return kCommonFlags | O_RDWR;
    case Access::Create:
      return kCommonFlags | O_RDWR | O_CREAT | O_TRUNC;
    case Access::Output:
      return kCommonFlags | O_WRONLY | O_CREAT | O_TRUNC;
    case Access::New:
      return kCommonFlags | O_WRONLY | O_CREAT | O_EXCL;
  }
  return kCommonFlags;
}

FilePurpose purposeOf(Access access) {
  return access == Access::ReadOnly ? FilePurpose::Read : FilePurpose::Write;
}

constexpr mode_t kAllMayReadAndWrite = 0666;  // the user's umask removes bits from it
constexpr mode_t kAnybodyMayWrite = 0222;

/// True for a file without write permission for anyone. The superuser could open it all the same,
/// so `open` alone doesn't refuse it.
bool isMarkedReadOnly(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         (status.st_mode & kAnybodyMayWrite) == 0;
}

/// Writes as `pwrite` does, but blocks the signal that a write beyond the process's size limit
/// (EFBIG) raises: it would end the process.
ssize_t pwriteWithoutSignal(int descriptor, std::span<const std::uint8_t> bytes, off_t offset) {
  sigset_t limit;
  sigset_t before;
  sigemptyset(&limit);
  sigaddset(&limit, SIGXFSZ);
  pthread_sigmask(SIG_BLOCK, &limit, &before);
  const ssize_t count = ::pwrite(descriptor, bytes.data(), bytes.size(), offset);
  const int problem = errno;
  constexpr timespec kAtOnce{};
  if (count < 0 && problem == EFBIG) sigtimedwait(&limit, nullptr, &kAtOnce);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  errno = problem;
  return count;
}

/// Offset of the locked byte: far beyond the end of the largest store (2 GiB), so that the lock
/// never covers content, even on a file server with mandatory locks.
constexpr off_t kLockByte = off_t{1} << 40;

struct flock rangeOf(short lockType, off_t begin, off_t length) {
  struct flock range {};
  range.l_type = lockType;
  range.l_whence = SEEK_SET;
  range.l_start = begin;
  range.l_len = length;
  return range;
}

struct flock lockByte(short lockType) {
  return rangeOf(lockType, kLockByte, 1);
}

}  // namespace

ByteFile::ByteFile(const std::filesystem::path& path, Access access)
    : path_(path), access_(access) {
  if (access != Access::ReadOnly && isMarkedReadOnly(path)) fail(EACCES);
  descriptor_ = ::open(path.c_str(), openFlags(access), kAllMayReadAndWrite);
  if (descriptor_ < 0) fail(errno);
  struct stat status {};
  if (::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) return;
  ::close(descriptor_);
  fail(EISDIR);
}

ByteFile::~ByteFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

void ByteFile::fail(int systemError) const {
  raiseFileError(path_, systemError, purposeOf(access_));
}

std::uint64_t ByteFile::size() const {
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) fail(errno);
  return static_cast<std::uint64_t>(status.st_size);
}

std::size_t ByteFile::readAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
  callReadWatch();
  const std::size_t wanted = allowedBytes({FileStep::Kind::Read, path_, offset, bytes.size()});
  std::size_t done = 0;
  while (done < wanted) {
    const ssize_t count =
        ::pread(descriptor_, bytes.data() + done, wanted - done, static_cast<off_t>(offset + done));
    if (count == 0) break;
    if (count > 0) {
      done += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      throw FileError(ErrorNumber::DeviceIoError, FileProblem::Other, path_, errno);
    }
  }
  return done;
}

void ByteFile::writeAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (access_ == Access::ReadOnly) fail(EPERM);
  const std::size_t wanted = allowedBytes({FileStep::Kind::Write, path_, offset, bytes.size()});
  std::size_t done = 0;
  while (done < wanted) {
    const ssize_t count = pwriteWithoutSignal(descriptor_, bytes.subspan(done, wanted - done),
                                              static_cast<off_t>(offset + done));
    if (count >= 0) {
      done += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      fail(errno);
    }
  }
  if (done < bytes.size()) fail(ENOSPC);
}

void ByteFile::truncate(std::uint64_t size) {
  if (access_ == Access::ReadOnly) fail(EPERM);
  if (::ftruncate(descriptor_, static_cast<off_t>(size)) != 0) fail(errno);
}

void ByteFile::close() {
  const int descriptor = descriptor_;
  descriptor_ = -1;
  // On Linux an interrupted close has closed the file.
  if (descriptor >= 0 && ::close(descriptor) != 0 && errno != EINTR) fail(errno);
}

void ByteFile::sync() {
  allowedBytes({FileStep::Kind::Sync, path_});
  if (::fsync(descriptor_) != 0) fail(errno);
}

void ByteFile::lockShared(std::chrono::milliseconds wait) {
  lock(F_RDLCK, wait);
}

void ByteFile::lockExclusive(std::chrono::milliseconds wait) {
  lock(F_WRLCK, wait);
}

void ByteFile::unlock() noexcept {
  struct flock range = lockByte(F_UNLCK);
  ::fcntl(descriptor_, F_OFD_SETLK, &range);
}

void ByteFile::lock(short type, std::chrono::milliseconds wait) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kPause{2};
  const Clock::time_point deadline = Clock::now() + wait;
  while (isContentLocked() || !tryLock(type)) {
    if (Clock::now() >= deadline)
      throw FileError(ErrorNumber::PermissionDenied, FileProblem::Held, path_, EAGAIN);
    std::this_thread::sleep_for(kPause);
  }
}

/// True when another program holds an exclusive lock on part of the content. Takes no lock itself.
bool ByteFile::isContentLocked() const {
  struct flock range = rangeOf(F_RDLCK, 0, std::max(static_cast<off_t>(size()), off_t{1}));
  while (::fcntl(descriptor_, F_OFD_GETLK, &range) != 0)
    if (errno != EINTR) fail(errno);
  return range.l_type != F_UNLCK;
}

bool ByteFile::tryLock(short type) const {
  struct flock range = lockByte(type);
  while (::fcntl(descriptor_, F_OFD_SETLK, &range) != 0) {
    if (errno == EAGAIN || errno == EACCES) return false;
    if (errno != EINTR) fail(errno);
  }
  return true;
}

bool ByteFile::isReplaced() const {
  struct stat opened {};
  struct stat named {};
  if (::fstat(descriptor_, &opened) != 0) fail(errno);
  if (::stat(path_.c_str(), &named) != 0) return true;
  return opened.st_dev != named.st_dev || opened.st_ino != named.st_ino;
}

}  // namespace files
