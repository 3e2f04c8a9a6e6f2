#include "platform/jet/engine/LongValueWriter.h"

#include <algorithm>

#include "platform/jet/engine/FreeSpace.h"
#include "platform/jet/engine/LongValues.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/LongValue.h"

namespace jet {
namespace {

const LongValueMaps& mapsOf(const TableSource& source, const ColumnDefinition& column) {
  const auto& all = source.definition.longValueMaps;
  const auto found = std::ranges::find(all, column.number, &LongValueMaps::column);
  if (found == all.end() || found->owned == RowPointer{})
    raiseUnsupported(source.place(source.definitionPage),
                     u"a column has no usage map for long values");
  return *found;
}

}  // namespace

Bytes storeLongValue(PageChanges& changes, UsageMaps& maps, const TableSource& source,
                     const ColumnDefinition& column, ByteView value) {
  const Layout& layout = changes.layout();
  if (value.empty()) return {};
  LongValueHead head;
  head.length = static_cast<std::uint32_t>(value.size());
  if (value.size() <= layout.longestInline) {
    head.inlineBytes = value;
    return head.encode();
  }
  const LongValueMaps& owner = mapsOf(source, column);
  const FreeSpace space(changes, maps, source,
                        {.owner = kLongValueOwner, .owned = owner.owned, .free = owner.free});
  if (value.size() <= layout.longestPiece) {
    head.form = LongValueHead::Form::Single;
    head.first = space.add(value, SlotMark::Row);
    return head.encode();
  }
  head.form = LongValueHead::Form::Chain;
  const std::size_t longest = layout.longestPiece - LongValueHead::kChainLink;
  // From the last piece to the first, as each names the next.
  for (std::size_t end = value.size(); end > 0;) {
    const std::size_t start = (end - 1) / longest * longest;
    Bytes piece;
    piece.reserve(LongValueHead::kChainLink + end - start);
    appendU32(piece, head.first.pack());
    appendBytes(piece, value.subspan(start, end - start));
    head.first = space.add(piece, SlotMark::Row);
    end = start;
  }
  return head.encode();
}

void dropLongValue(PageChanges& changes, UsageMaps& maps, const TableSource& source,
                   const ColumnDefinition& column, ByteView stored) {
  const Place place = source.place(source.definitionPage);
  if (stored.empty()) return;
  const LongValueHead head = LongValueHead::decode(stored, place);
  for (const RowPointer piece : piecesOf(source, head, place)) {
    Bytes page = *changes.read(piece.page, place);
    DataPageEditor rows(changes.layout(), page, source.place(piece.page));
    rows.markDeleted(piece.slot);
    changes.stage(WriteStep::FreeSpace, piece.page, std::move(page));
    maps.hint(mapsOf(source, column).free, piece.page, true);
  }
}

}  // namespace jet
