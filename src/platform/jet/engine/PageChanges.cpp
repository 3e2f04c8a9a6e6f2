#include "platform/jet/engine/PageChanges.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace jet {
namespace {

/// Allocation and content of pages may reach the disk in any order, as long as no map owns them
/// yet. Nothing depends on hints.
bool endsWithSync(WriteStep step) {
  return step != WriteStep::TakePages && step != WriteStep::Hints;
}

}  // namespace

PageChanges::PageChanges(Pager& pager) : pager_(pager), pageCount_(pager.pageCount()) {}

PageNumber PageChanges::addPage(const Location& from) {
  if ((std::uint64_t{pageCount_} + 1) * layout().pageSize > layout().largestFile)
    raiseUnsupported(from, u"the file has reached its largest size");
  return PageNumber(pageCount_++);
}

Pager::Page PageChanges::read(PageNumber number, const Location& from) {
  const auto found = latest_.find(number);
  return found != latest_.end() ? found->second.page : pager_.read(number, from);
}

void PageChanges::stage(WriteStep step, PageNumber number, Bytes page) {
  Latest& latest = latest_[number];
  assert(step >= latest.step && "a page is staged in an earlier step than before");
  assert((step != WriteStep::TakePages || groupsOf(WriteStep::Hints).empty()) &&
         "a page is taken after one was freed");
  latest.step = step;
  latest.page = std::make_shared<const Bytes>(std::move(page));
  std::vector<Group>& groups = groupsOf(step);
  if (groups.empty()) groups.emplace_back();
  Group& group = groups.back();
  if (!group.empty() && group.back().number == number)
    group.back().page = latest.page;
  else
    group.push_back({number, latest.page});
}

void PageChanges::stageMap(WriteStep step, PageNumber number, Bytes page) {
  const auto found = latest_.find(number);
  const WriteStep latest = found == latest_.end() ? step : std::max(found->second.step, step);
  stage(latest, number, std::move(page));
  if (latest > step) barrier(latest);
}

void PageChanges::barrier(WriteStep step) {
  std::vector<Group>& groups = groupsOf(step);
  if (!groups.empty() && !groups.back().empty()) groups.emplace_back();
}

/// Writes a group; `end` is the number of pages in the file.
void PageChanges::write(const Group& group, std::uint32_t& end) {
  for (const Write& write : group) {
    // A new bitmap page of the global map is written before the new pages that it covers, which may
    // have lower numbers: fill the gap.
    for (; end < write.number.value(); ++end)
      pager_.write(PageNumber(end), Bytes(layout().pageSize));
    pager_.write(write.number, *write.page);
    end = std::max(end, write.number.value() + 1);
  }
}

void PageChanges::commit() {
  std::uint32_t end = pager_.pageCount();
  // Within `NewPages`, pages beyond the end come first, so that a full disk is noticed before
  // existing pages are written, and in the order of their numbers, so that the file grows page by
  // page.
  for (Group& group : groupsOf(WriteStep::NewPages))
    std::ranges::stable_sort(group, {}, [end](const Write& write) {
      return std::pair(write.number.value() < end, write.number);
    });
  bool unsynced = false;
  for (std::size_t i = 0; i < kSteps; ++i) {
    bool first = true;
    for (const Group& group : steps_[i]) {
      if (group.empty()) continue;
      if (!std::exchange(first, false)) pager_.sync();
      write(group, end);
      unsynced = true;
    }
    if (!unsynced || !endsWithSync(static_cast<WriteStep>(i))) continue;
    pager_.sync();
    unsynced = false;
  }
}

}  // namespace jet
