#include "platform/jet/engine/RowPlacement.h"

#include <algorithm>

#include "platform/jet/engine/StrayBodies.h"
#include "platform/jet/format/Damage.h"
#include "platform/jet/format/EngineError.h"

namespace jet {
namespace {

/// A row that gets shorter by at most this many bytes is padded, so that the rows below it stay.
constexpr std::size_t kKeptUnused = 8;

PageOwner ownerOf(const TableSource& source) {
  return {.owner = source.definitionPage,
          .owned = source.definition.ownedPages,
          .free = source.definition.freePages};
}

/// The row's bytes for a slot of that length.
Bytes bytesFor(Version version, const RowParts& parts, std::size_t length) {
  Bytes row = parts.encode(version);
  if (row.size() >= length || length - row.size() > kKeptUnused || !parts.hasVariable) return row;
  Bytes padded = parts.encode(version, length);
  return padded.size() == length ? padded : row;
}

}  // namespace

RowPlacement::RowPlacement(PageChanges& changes, UsageMaps& maps, const TableSource& source)
    : changes_(changes), source_(source), space_(changes, maps, source, ownerOf(source)) {}

bool RowPlacement::storeAt(RowPointer at, const RowParts& parts, SlotMark mark) {
  Bytes page = *changes_.read(at.page, source_.location(source_.definitionPage));
  DataPageEditor rows(changes_.layout(), page, source_.location(at.page));
  const Bytes row = bytesFor(source_.version(), parts, rows.slot(at.slot).length);
  if (!rows.replace(at.slot, row, mark)) {
    rows.squeeze();
    if (!rows.replace(at.slot, row, mark)) return false;
  }
  changes_.stage(WriteStep::Rows, at.page, std::move(page));
  space_.touch(at.page);
  return true;
}

/// A body with these bytes that an interrupted attempt at the same change wrote.
std::optional<RowPointer> RowPlacement::bodyLeftOver(ByteView row) const {
  std::optional<std::vector<RowPointer>> strays;
  for (const PageNumber number : space_.candidates()) {
    const Pager::Page page = changes_.read(number, source_.location(source_.definitionPage));
    const DataPage rows(changes_.layout(), *page, source_.location(number));
    if (rows.owner() != source_.definitionPage) continue;
    for (std::size_t i = 0; i < rows.slotCount(); ++i) {
      const RowPointer body{number, SlotNumber(i)};
      const Slot slot = rows.slot(body.slot);
      if (!slot.isBody() || !std::ranges::equal(rows.bytes(slot), row)) continue;
      if (!strays) strays = strayBodies(source_);
      if (std::ranges::find(*strays, body) != strays->end()) return body;
    }
  }
  return std::nullopt;
}

void RowPlacement::store(RowId id, const FoundRow& old, const RowParts& parts) {
  const Bytes row = parts.encode(source_.version());
  if (row.size() > changes_.layout().longestRow) throw error::rowTooLarge();
  const RowPointer home{id.page, id.slot};
  const bool moved = old.body != home;
  if (storeAt(old.body, parts, moved ? SlotMark::Body : SlotMark::Row)) return;
  if (moved && storeAt(home, parts, SlotMark::Row)) {
    dropBody(old.body);
    return;
  }
  const std::optional<RowPointer> left = bodyLeftOver(row);
  const RowPointer target =
      left ? *left : space_.add(row, SlotMark::Body, {home.page, old.body.page});
  space_.touch(target.page);
  Bytes page = *changes_.read(home.page, source_.location(source_.definitionPage));
  DataPageEditor rows(changes_.layout(), page, source_.location(home.page));
  Bytes pointer(RowPointer::kSize);
  putRowPointer(pointer, MovedRow::kBody, target);
  if (!rows.replace(home.slot, pointer, SlotMark::Pointer))
    raiseUnsupported(source_.location(home.page), u"a row is too short to become a pointer");
  changes_.stage(WriteStep::Rows, home.page, std::move(page));
  space_.touch(home.page);
  if (moved) dropBody(old.body);
}

void RowPlacement::dropBody(RowPointer body) {
  Bytes page = *changes_.read(body.page, source_.location(source_.definitionPage));
  DataPageEditor rows(changes_.layout(), page, source_.location(body.page));
  rows.markDeleted(body.slot);
  changes_.stage(WriteStep::DropOld, body.page, std::move(page));
  space_.touch(body.page);
}

}  // namespace jet
