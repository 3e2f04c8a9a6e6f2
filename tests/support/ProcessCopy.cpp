#include "support/ProcessCopy.h"

#include <sys/wait.h>
#include <unistd.h>

namespace support {

std::vector<int> statusesOfCopies(const std::vector<std::function<int()>>& acts) {
  constexpr unsigned kTimeout = 300;  // seconds
  std::vector<pid_t> copies;
  for (const auto& act : acts) {
    copies.push_back(::fork());
    if (copies.back() != 0) continue;
    ::alarm(kTimeout);
    ::_exit(act());
  }
  std::vector<int> statuses;
  for (const pid_t copy : copies) {
    int status = 0;
    const bool ended = ::waitpid(copy, &status, 0) == copy && WIFEXITED(status);
    statuses.push_back(ended ? WEXITSTATUS(status) : -1);
  }
  return statuses;
}

int statusOfCopy(const std::function<int()>& act) {
  return statusesOfCopies({act})[0];
}

}  // namespace support
