#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/files/seam/FaultSeam.h"

namespace jettest {

/// One write as it reached the file.
struct LoggedWrite {
  std::uint64_t offset = 0;
  std::string bytes;
};
/// What was written between two syncs, in the program's order. The disk may keep any subset of it
/// when the power fails.
using SyncGroup = std::vector<LoggedWrite>;

/// Notes all writes to a file while it lives.
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

/// What a power cut may leave of a group, each as the indexes of the writes that it keeps. All
/// subsets of up to five writes; of more none, all, all but one, one alone, each prefix and a
/// sample.
std::vector<std::vector<std::size_t>> subsetsOf(std::size_t writes);
std::vector<std::size_t> everyWrite(std::size_t writes);

/// The file's bytes after these writes of a group.
std::string withWrites(std::string bytes, const SyncGroup& group,
                       const std::vector<std::size_t>& kept);

}  // namespace jettest
