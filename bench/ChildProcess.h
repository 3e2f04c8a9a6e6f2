#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// A started program, which ends with this object.
class ChildProcess {
 public:
  /// Starts `words[0]`, sought on the search path, with just this environment. It says nothing on
  /// this program's output, and inherits the one descriptor, if any, under its own number.
  ChildProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               int inherited = -1);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  bool running() const;
  /// Bytes of the most memory that it had at one time so far.
  double peakMemory() const;

 private:
  pid_t pid_ = -1;
};

/// Peak memory of any process, itself "self".
double peakMemoryOf(const std::string& process);

}  // namespace bench
