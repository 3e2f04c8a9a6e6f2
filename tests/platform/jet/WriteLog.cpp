#include "platform/jet/WriteLog.h"

#include <fstream>
#include <numeric>
#include <random>
#include <set>

namespace jettest {

using Kind = files::FileStep::Kind;

WriteLog::WriteLog(std::filesystem::path file) : file_(std::move(file)) {
  files::setFaultSeam([this](const files::FileStep& step) {
    if (step.kind != Kind::Read) note(step);
    return step.size;
  });
}

WriteLog::~WriteLog() {
  files::setFaultSeam({});
}

/// The seam is called before a step, so the preceding write is complete by now.
void WriteLog::note(const files::FileStep& step) {
  fetchLast();
  if (step.kind == Kind::Sync) {
    ++syncs_;
    synced_ = true;
  }
  if (step.kind == Kind::Write) last_ = {step.offset, step.size};
}

void WriteLog::fetchLast() {
  if (!last_) return;
  LoggedWrite write{last_->first, std::string(last_->second, '\0')};
  std::ifstream stream(file_, std::ios::binary);
  stream.seekg(static_cast<std::streamoff>(write.offset));
  stream.read(write.bytes.data(), static_cast<std::streamsize>(write.bytes.size()));
  if (std::exchange(synced_, false)) groups_.emplace_back();
  groups_.back().push_back(std::move(write));
  last_.reset();
}

std::vector<SyncGroup> WriteLog::groups() {
  fetchLast();
  return groups_;
}

std::vector<std::vector<std::size_t>> subsetsOf(std::size_t writes) {
  constexpr std::size_t kAllUpTo = 5;
  constexpr int kSample = 12;
  std::set<std::vector<std::size_t>> subsets;
  const auto add = [&](auto keeps) {
    std::vector<std::size_t> kept;
    for (std::size_t i = 0; i < writes; ++i)
      if (keeps(i)) kept.push_back(i);
    subsets.insert(kept);
  };
  if (writes <= kAllUpTo) {
    for (std::size_t mask = 0; mask < std::size_t{1} << writes; ++mask)
      add([mask](std::size_t i) { return (mask >> i & 1) != 0; });
  } else {
    for (std::size_t which = 0; which <= writes; ++which) {
      add([which](std::size_t i) { return i < which; });
      add([which](std::size_t i) { return i == which; });
      add([which](std::size_t i) { return i != which; });
    }
    std::mt19937 generator(static_cast<std::uint32_t>(writes));
    for (int i = 0; i < kSample; ++i) add([&](std::size_t) { return generator() % 2 == 0; });
  }
  return {subsets.begin(), subsets.end()};
}

std::vector<std::size_t> everyWrite(std::size_t writes) {
  std::vector<std::size_t> all(writes);
  std::iota(all.begin(), all.end(), 0U);
  return all;
}

std::string withWrites(std::string bytes, const SyncGroup& group,
                       const std::vector<std::size_t>& kept) {
  for (const std::size_t which : kept) {
    const LoggedWrite& write = group[which];
    bytes.resize(std::max<std::size_t>(bytes.size(), write.offset + write.bytes.size()));
    bytes.replace(write.offset, write.bytes.size(), write.bytes);
  }
  return bytes;
}

}  // namespace jettest
