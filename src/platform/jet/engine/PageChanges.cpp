#include "platform/jet/engine/PageChanges.h"

#include <algorithm>
#include <utility>

namespace jet {
namespace {

constexpr std::uint64_t kLargestJet3 = 1ULL << 30;
constexpr std::uint64_t kLargestJet4 = 1ULL << 31;

}  // namespace

PageChanges::PageChanges(Pager& pager) : pager_(pager), pageCount_(pager.pageCount()) {}

std::uint32_t PageChanges::addPage(const Place& from) {
  const std::uint64_t largest = layout().version == Version::Jet3 ? kLargestJet3 : kLargestJet4;
  if ((std::uint64_t{pageCount_} + 1) * layout().pageSize > largest)
    raiseUnsupported(from, u"the file has reached its largest size");
  return pageCount_++;
}

Pager::Page PageChanges::read(std::uint32_t number, const Place& from) {
  const auto found = latest_.find(number);
  return found != latest_.end() ? found->second.page : pager_.read(number, from);
}

void PageChanges::stage(WriteStep step, std::uint32_t number, Bytes page) {
  Latest& latest = latest_[number];
  latest.step = std::max(latest.step, step);
  latest.page = std::make_shared<const Bytes>(std::move(page));
  std::vector<Write>& writes = steps_[static_cast<std::size_t>(latest.step)];
  if (!writes.empty() && writes.back().number == number)
    writes.back().page = latest.page;
  else
    writes.push_back({number, latest.page});
}

/// Taking pages and filling them may reach the disk in any order, as long as no map owns them yet.
bool PageChanges::endsGroup(std::size_t step) const {
  constexpr auto kOwnerMaps = static_cast<std::size_t>(WriteStep::OwnerMaps);
  return step >= kOwnerMaps || (step + 1 == kOwnerMaps && !steps_[kOwnerMaps].empty());
}

void PageChanges::commit() {
  std::uint32_t end = pager_.pageCount();
  bool unsynced = false;
  // Those behind the end first, so that a full disk shows before anything else is written, and in
  // the order of their numbers, so that the file grows page by page.
  std::ranges::stable_sort(
      steps_[static_cast<std::size_t>(WriteStep::NewPages)], {},
      [end](const Write& write) { return std::pair(write.number < end, write.number); });
  for (std::size_t step = 0; step < kSteps; ++step) {
    for (const Write& write : steps_[step]) {
      // A bitmap of the global map stands behind the pages that it was made for.
      for (; end < write.number; ++end) pager_.write(end, Bytes(layout().pageSize));
      pager_.write(write.number, *write.page);
      end = std::max(end, write.number + 1);
      unsynced = true;
    }
    if (!unsynced || !endsGroup(step)) continue;
    pager_.sync();
    unsynced = false;
  }
}

}  // namespace jet
