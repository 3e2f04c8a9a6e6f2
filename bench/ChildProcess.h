#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// A started program; the destructor ends it.
class ChildProcess {
 public:
  /// Starts `arguments[0]`, looked up on the search path, with exactly this environment. The
  /// standard streams are the null device; the program inherits the descriptor `inherited`, if
  /// there is one, under the same number.
  ChildProcess(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment, int inherited = -1);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  bool running() const;
  /// Peak memory of the program so far, in bytes.
  double peakMemory() const;

 private:
  pid_t pid_ = -1;
};

/// Peak memory of a process in bytes; "self" for this one.
double peakMemoryOf(const std::string& process);

/// Starts this program again with the arguments `option` and `path`; returns the number that it
/// prints.
double numberPrintedByChild(const std::string& option, const std::filesystem::path& path);

}  // namespace bench
