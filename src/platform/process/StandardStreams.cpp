#include "platform/process/StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <optional>

namespace process {
namespace {

/// What a broken pipe did before this process changed it.
std::optional<struct sigaction>& inheritedPipeAction() {
  static std::optional<struct sigaction> action;
  return action;
}

}  // namespace

void prepareStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
    // It is the lowest free number, and so the one that the system takes.
    ::open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY);
  }
  struct sigaction ignore {};
  struct sigaction before {};
  ignore.sa_handler = SIG_IGN;
  if (::sigaction(SIGPIPE, &ignore, &before) == 0 && !inheritedPipeAction())
    inheritedPipeAction() = before;
}

void restoreInheritedSignals() {
  if (inheritedPipeAction()) ::sigaction(SIGPIPE, &*inheritedPipeAction(), nullptr);
}

void writeToStandardError(std::string_view text) noexcept {
  while (!text.empty()) {
    struct pollfd error {};
    error.fd = STDERR_FILENO;
    error.events = POLLOUT;
    const int ready = ::poll(&error, 1, 0);
    if (ready < 0 && errno == EINTR) continue;
    if (ready != 1 || (error.revents & POLLOUT) == 0) return;
    // A pipe that is ready takes this much without waiting.
    const ssize_t count =
        ::write(STDERR_FILENO, text.data(), std::min<std::size_t>(text.size(), PIPE_BUF));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace process
