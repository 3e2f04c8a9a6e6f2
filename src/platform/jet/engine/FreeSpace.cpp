#include "platform/jet/engine/FreeSpace.h"

#include <algorithm>

#include "platform/jet/engine/MappedPages.h"

namespace jet {
namespace {

/// A page counts as one with room from this many free bytes on, those of deleted rows included.
constexpr std::size_t kWorthTrying = 100;
/// The map is a hint only: a new page is cheaper than reading many full ones.
constexpr std::size_t kMostTries = 32;

}  // namespace

std::vector<PageNumber> FreeSpace::candidates() const {
  std::vector<PageNumber> pages =
      pagesWithRoom(changes_.pager(), owner_.free, source_.location(source_.definitionPage));
  std::ranges::reverse(pages);  // the newest are the emptiest
  pages.resize(std::min(pages.size(), kMostTries));
  return pages;
}

std::optional<RowPointer> FreeSpace::addTo(PageNumber number, ByteView row, SlotMark mark) {
  Bytes page = *changes_.read(number, source_.location(source_.definitionPage));
  if (page[PageHead::kType] != static_cast<std::uint8_t>(PageType::Data) ||
      PageNumber(u32At(page, PageHead::kOwner)) != owner_.owner)
    return std::nullopt;
  DataPageEditor rows(changes_.layout(), page, source_.location(number));
  if (!rows.hasRoomFor(row.size())) rows.squeeze();
  const std::optional<SlotNumber> slot = rows.add(row, mark);
  if (!slot) return std::nullopt;
  changes_.stage(WriteStep::NewPages, number, std::move(page));
  touch(number);
  return RowPointer{number, *slot};
}

RowPointer FreeSpace::add(ByteView row, SlotMark mark, const std::vector<PageNumber>& excluded) {
  for (const PageNumber page : candidates()) {
    if (std::ranges::find(excluded, page) != excluded.end()) continue;
    if (const std::optional<RowPointer> at = addTo(page, row, mark)) return *at;
  }
  const PageNumber page = maps_.pages().take();
  changes_.stage(WriteStep::NewPages, page,
                 DataPageEditor::newPage(changes_.layout(), owner_.owner));
  const std::optional<RowPointer> at = addTo(page, row, mark);
  if (!at) raiseUnsupported(source_.location(page), u"a row is longer than a page");
  maps_.add(owner_.owned, page, WriteStep::OwnerMaps);
  // `noteTouched` adds the page to this map in the step `Hints`, when the table surely owns it.
  if (owner_.free != RowPointer{}) maps_.cover(owner_.free, page, WriteStep::OwnerMaps);
  return *at;
}

void FreeSpace::noteTouched() {
  for (const PageNumber number : touched_) {
    Bytes page = *changes_.read(number, source_.location(source_.definitionPage));
    const DataPageEditor rows(changes_.layout(), page, source_.location(number));
    maps_.hint(owner_.free, number, rows.freeBytes() + rows.deadBytes() >= kWorthTrying);
  }
}

}  // namespace jet
