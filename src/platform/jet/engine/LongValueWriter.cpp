#include "platform/jet/engine/LongValueWriter.h"

#include <algorithm>

#include "platform/jet/engine/LongValues.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/LongValue.h"

namespace jet {

FreeSpace& LongValueWriter::spaceOf(const ColumnDefinition& column) {
  const auto& all = source_.definition.longValueMaps;
  const auto found = std::ranges::find(all, column.number, &LongValueMaps::column);
  if (found == all.end() || found->owned == RowPointer{})
    raiseUnsupported(source_.location(source_.definitionPage),
                     u"a column has no usage map for long values");
  const PageOwner owner{.owner = kLongValueOwner, .owned = found->owned, .free = found->free};
  return spaces_.try_emplace(column.number, changes_, maps_, source_, owner).first->second;
}

Bytes LongValueWriter::store(const ColumnDefinition& column, ByteView value) {
  const Layout& layout = changes_.layout();
  if (value.empty()) return {};
  LongValueHead head;
  head.length = static_cast<std::uint32_t>(value.size());
  if (value.size() <= layout.longestInline) {
    head.inlineBytes = value;
    return head.encode();
  }
  FreeSpace& space = spaceOf(column);
  if (value.size() <= layout.longestPiece) {
    head.form = LongValueHead::Form::Single;
    head.first = space.add(value, SlotMark::Row);
    return head.encode();
  }
  head.form = LongValueHead::Form::Chain;
  const std::size_t longest = layout.longestPiece - RowPointer::kSize;
  // From the last piece to the first, as each points to the next.
  for (std::size_t end = value.size(); end > 0;) {
    const std::size_t start = (end - 1) / longest * longest;
    Bytes piece(RowPointer::kSize);
    putRowPointer(piece, LongValueHead::kNextPiece, head.first);
    appendBytes(piece, value.subspan(start, end - start));
    head.first = space.add(piece, SlotMark::Row);
    end = start;
  }
  return head.encode();
}

void LongValueWriter::drop(const ColumnDefinition& column, ByteView stored) {
  const Location location = source_.location(source_.definitionPage);
  if (stored.empty()) return;
  const LongValueHead head = LongValueHead::decode(stored, location);
  for (const RowPointer piece : piecesOf(source_, head, location)) {
    Bytes page = *changes_.read(piece.page, location);
    DataPageEditor rows(changes_.layout(), page, source_.location(piece.page));
    rows.markDeleted(piece.slot);
    changes_.stage(WriteStep::DropOld, piece.page, std::move(page));
    spaceOf(column).touch(piece.page);
  }
}

void LongValueWriter::noteFreeSpace() {
  for (auto& [column, space] : spaces_) space.noteTouched();
}

}  // namespace jet
