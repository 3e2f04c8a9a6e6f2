#include "support/FileFaults.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace support {

using Kind = files::FileStep::Kind;
using runtime::ErrorNumber;
using runtime::RunTimeError;

FileFaults::~FileFaults() {
  files::setFaultSeam({});
}

void FileFaults::cutAtChange(int step, std::size_t bytes) {
  cutAt_ = step;
  cutBytes_ = bytes;
  changes_ = 0;
  files::setFaultSeam([this](const files::FileStep& fileStep) {
    return fileStep.kind == Kind::Read ? fileStep.size : change(fileStep);
  });
}

void FileFaults::endFilesAt(std::size_t offset) {
  files::setFaultSeam([offset](const files::FileStep& step) -> std::size_t {
    if (step.kind != Kind::Read) return step.size;
    return step.offset >= offset ? 0 : std::min(step.size, offset - step.offset);
  });
}

std::size_t FileFaults::change(const files::FileStep& step) {
  const int number = changes_++;
  if (cutAt_ < 0 || number < cutAt_) return step.size;
  if (step.kind == Kind::Write && number == cutAt_) return std::min(step.size, cutBytes_);
  throw RunTimeError(ErrorNumber::DeviceIoError);
}

bool killedAtChange(int step, const std::function<void()>& act) {
  const pid_t copy = ::fork();
  if (copy == 0) {
    files::setFaultSeam([step, changes = 0](const files::FileStep& fileStep) mutable {
      if (fileStep.kind != Kind::Read && changes++ == step) ::raise(SIGKILL);
      return fileStep.size;
    });
    act();
    ::_exit(0);
  }
  int status = 0;
  return copy > 0 && ::waitpid(copy, &status, 0) == copy && WIFSIGNALED(status) &&
         WTERMSIG(status) == SIGKILL;
}

int errorNumberOf(const std::function<void()>& use) {
  const std::string failure = failureOf(use);
  return failure.empty() ? 0 : std::stoi(failure);
}

std::string failureOf(const std::function<void()>& use) {
  try {
    use();
    return "";
  } catch (const RunTimeError& error) {
    return std::to_string(error.number()) + ": " + runtime::toUtf8(error.text());
  }
}

}  // namespace support
