#include "ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace bench {
namespace {

namespace fs = std::filesystem;

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment, int inherited) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&files, descriptor, "/dev/null", O_RDWR, 0);
  // Duplicating a descriptor onto itself clears its close-on-exec flag.
  if (inherited >= 0) posix_spawn_file_actions_adddup2(&files, inherited, inherited);
  const int failure = posix_spawnp(&pid_, arguments[0].c_str(), &files, nullptr,
                                   pointersTo(arguments).data(), pointersTo(environment).data());
  posix_spawn_file_actions_destroy(&files);
  if (failure != 0) throw std::system_error(failure, std::generic_category(), arguments[0]);
}

ChildProcess::~ChildProcess() {
  ::kill(pid_, SIGTERM);
  ::waitpid(pid_, nullptr, 0);
}

bool ChildProcess::running() const {
  siginfo_t ended{};
  ::waitid(P_PID, static_cast<id_t>(pid_), &ended, WEXITED | WNOHANG | WNOWAIT);
  return ended.si_pid == 0;
}

double ChildProcess::peakMemory() const {
  return peakMemoryOf(std::to_string(pid_));
}

double numberPrintedByChild(const std::string& option, const fs::path& path) {
  const std::string command = "'" + fs::read_symlink("/proc/self/exe").string() + "' " + option +
                              " '" + path.string() + "'";
  FILE* const child = popen(command.c_str(), "r");
  double number = 0;
  const bool printed = child != nullptr && std::fscanf(child, "%lf", &number) == 1;
  if (child == nullptr || pclose(child) != 0 || !printed)
    throw std::runtime_error("the child process failed");
  return number;
}

double peakMemoryOf(const std::string& process) {
  constexpr double kKilobyte = 1024;
  std::ifstream status("/proc/" + process + "/status");
  for (std::string name; status >> name;)
    if (double peak = 0; name == "VmHWM:" && status >> peak) return peak * kKilobyte;
  throw std::runtime_error("the system doesn't tell the peak memory");
}

}  // namespace bench
