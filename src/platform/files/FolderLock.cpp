#include "platform/files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/files/FileError.h"

namespace files {

FolderLock::FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds wait)
    : descriptor_(
          ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  using Clock = std::chrono::steady_clock;
  // Short, so that others get the lock between the writes of a program that writes repeatedly.
  constexpr std::chrono::microseconds kPause{200};
  const Clock::time_point deadline = Clock::now() + wait;
  while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return;
    if (Clock::now() >= deadline) {
      ::close(descriptor_);
      throw FileError(runtime::ErrorNumber::PermissionDenied, FileProblem::Held, folder,
                      EWOULDBLOCK);
    }
    std::this_thread::sleep_for(kPause);
  }
}

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace files
