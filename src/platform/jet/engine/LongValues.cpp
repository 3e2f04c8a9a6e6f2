#include "platform/jet/engine/LongValues.h"

#include <algorithm>
#include <set>

#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// Calls `use` with each piece's pointer and its bytes, without the link to the next piece.
template <class Use>
void walkPieces(const TableSource& source, const LongValueHead& head, const Location& location,
                Use use) {
  const bool chain = head.form == LongValueHead::Form::Chain;
  RowPointer at = head.first;
  std::size_t left = head.length;
  std::set<RowPointer> walked;
  Pager& pager = source.pager;
  while (left > 0) {
    if (!walked.insert(at).second)
      raiseDamaged(source.location(at.page), u"a long value leads in a circle");
    const Pager::Page page = pager.read(at.page, location);
    const DataPage pieces(pager.layout(), *page, source.location(at.page));
    if (pieces.owner() != kLongValueOwner)
      raiseDamaged(source.location(at.page), u"a long value leads to a page of another kind");
    const Slot slot = pieces.slot(at.slot);
    const std::size_t link = chain ? RowPointer::kSize : 0;
    if (slot.isDeleted())
      raiseDamaged(source.location(at.page), u"a piece of a long value is missing");
    if (slot.length <= link)
      raiseDamaged(source.location(at.page), u"a piece of a long value is too short",
                   {.size = link + 1, .available = slot.length});
    const ByteView bytes = pieces.bytes(slot);
    const std::size_t count = std::min(left, bytes.size() - link);
    use(at, bytes.subspan(link, count));
    left -= count;
    if (left > 0 && !chain)
      raiseDamaged(source.location(at.page), u"a long value is shorter than its row says",
                   {.size = count + left, .available = bytes.size()});
    if (chain) at = rowPointerAt(bytes, LongValueHead::kNextPiece);
  }
}

}  // namespace

Bytes readLongValue(const TableSource& source, ByteView stored, const Location& location) {
  if (stored.empty()) return {};
  const LongValueHead head = LongValueHead::decode(stored, location);
  if (head.form == LongValueHead::Form::Inline)
    return {head.inlineBytes.begin(), head.inlineBytes.end()};
  const std::size_t fileSize = source.pager.pageCount() * source.pager.layout().pageSize;
  if (head.length > fileSize)
    raiseDamaged(location, u"a long value claims more than the file holds",
                 {.size = head.length, .available = fileSize});
  Bytes value;
  value.reserve(head.length);
  walkPieces(source, head, location,
             [&](RowPointer, ByteView bytes) { appendBytes(value, bytes); });
  return value;
}

std::vector<RowPointer> piecesOf(const TableSource& source, const LongValueHead& head,
                                 const Location& location) {
  std::vector<RowPointer> pieces;
  if (head.form != LongValueHead::Form::Inline)
    walkPieces(source, head, location, [&](RowPointer at, ByteView) { pieces.push_back(at); });
  return pieces;
}

}  // namespace jet
