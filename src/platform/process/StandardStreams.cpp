#include "platform/process/StandardStreams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <vector>

namespace process {
namespace {

/// While these are ignored, a write to a pipe without a reader or beyond the process's file size
/// limit fails.
constexpr std::array kWriteSignals{SIGPIPE, SIGXFSZ};

/// The actions on those signals before this process changed them; empty until then.
std::vector<struct sigaction>& inheritedActions() {
  static std::vector<struct sigaction> actions;
  return actions;
}

}  // namespace

void prepareStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
    // The system assigns the lowest free number, which is this one.
    ::open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY);
  }
  if (!inheritedActions().empty()) return;
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  inheritedActions().resize(kWriteSignals.size());
  for (std::size_t i = 0; i < kWriteSignals.size(); ++i)
    ::sigaction(kWriteSignals[i], &ignore, &inheritedActions()[i]);
}

void restoreInheritedSignals() {
  for (std::size_t i = 0; i < inheritedActions().size(); ++i)
    ::sigaction(kWriteSignals[i], &inheritedActions()[i], nullptr);
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
