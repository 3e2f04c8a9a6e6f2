#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/files/seam/FaultSeam.h"

namespace jettest {

/// One write to the file.
struct LoggedWrite {
  std::uint64_t offset = 0;
  std::string bytes;
};
/// The writes between two syncs, in the program's order. A power cut may leave any subset of them
/// on the disk.
using SyncGroup = std::vector<LoggedWrite>;

/// Records all writes to a file during its lifetime.
class WriteLog {
 public:
  explicit WriteLog(std::filesystem::path file);
  ~WriteLog();
  WriteLog(const WriteLog&) = delete;
  WriteLog& operator=(const WriteLog&) = delete;

  /// The groups so far, none of them empty.
  std::vector<SyncGroup> groups();
  int syncs() const { return syncs_; }

 private:
  void note(const files::FileStep& step);
  void fetchLast();

  std::filesystem::path file_;
  std::vector<SyncGroup> groups_;
  std::optional<std::pair<std::uint64_t, std::size_t>> last_;  ///< a write not yet read back
  bool synced_ = true;
  int syncs_ = 0;
};

/// The subsets of a group that a power cut may leave, each as the indexes of the writes that are
/// kept. All subsets of up to five writes; for more writes: none, all, all but one, a single one,
/// each prefix and a sample.
std::vector<std::vector<std::size_t>> subsetsOf(std::size_t writes);
std::vector<std::size_t> everyWrite(std::size_t writes);

/// The file's bytes after these writes of a group.
std::string withWrites(std::string bytes, const SyncGroup& group,
                       const std::vector<std::size_t>& kept);

}  // namespace jettest
