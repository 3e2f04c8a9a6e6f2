#include "platform/process/DetachedProgram.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

#include "platform/process/StandardStreams.h"
#include "platform/runtime/RunTimeError.h"

namespace process {
namespace {

using runtime::ErrorNumber;
using runtime::RunTimeError;

/// A pipe whose ends close when a child process runs a program (`exec`).
struct Pipe {
  Pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw RunTimeError(ErrorNumber::OutOfMemory);
  }
  ~Pipe() {
    ::close(ends[0]);
    if (writeEndOpen) ::close(ends[1]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void closeWriteEnd() {
    ::close(ends[1]);
    writeEndOpen = false;
  }

  std::array<int, 2> ends{};
  bool writeEndOpen = true;
};

/// Runs in the first child: forks a second child that executes the program, then exits, so that the
/// program isn't a child of this process (double fork). Writes an error to `report`. Calls only
/// async-signal-safe functions.
[[noreturn]] void execDetached(const char* program, const char* folder, int report) {
  ::setsid();
  const pid_t child = ::fork();
  if (child == 0) {
    const std::array<char*, 2> arguments{const_cast<char*>(program), nullptr};
    restoreInheritedSignals();
    if (::chdir(folder) == 0) ::execv(program, arguments.data());
  }
  if (child <= 0) {
    const int problem = errno;
    while (::write(report, &problem, sizeof problem) < 0 && errno == EINTR) {
    }
  }
  ::_exit(0);
}

/// The system's error number (`errno`) when the program can't be started; 0 once it runs.
int start(const std::string& program, const std::string& folder) {
  Pipe report;
  const pid_t child = ::fork();
  if (child < 0) return errno;
  if (child == 0) execDetached(program.c_str(), folder.c_str(), report.ends[1]);
  report.closeWriteEnd();
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  int problem = 0;
  ssize_t count = 0;
  // The read ends without data if `exec` succeeded, since that closes the pipe.
  do {
    count = ::read(report.ends[0], &problem, sizeof problem);
  } while (count < 0 && errno == EINTR);
  return count == sizeof problem ? problem : 0;
}

}  // namespace

void startDetached(const std::filesystem::path& program) {
  std::error_code missing;
  if (!std::filesystem::is_regular_file(program, missing))
    throw RunTimeError(ErrorNumber::FileNotFound);
  const int problem = start(program.native(), program.parent_path().native());
  if (problem == EACCES || problem == EPERM) throw RunTimeError(ErrorNumber::PermissionDenied);
  if (problem != 0) throw RunTimeError(ErrorNumber::InvalidProcedureCall);
}

}  // namespace process
