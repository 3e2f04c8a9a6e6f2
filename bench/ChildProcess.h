#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// A started program; the destructor ends it.
class ChildProcess {
 public:
  /// Starts `words[0]`, looked up on the search path, with exactly this environment. The standard
  /// streams are the null device; the program inherits the descriptor `inherited`, if there is one,
  /// under the same number.
  ChildProcess(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               int inherited = -1);
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

/// The number that this program prints when it is started with the word and the path.
double numberOfChild(const std::string& word, const std::filesystem::path& path);

}  // namespace bench
