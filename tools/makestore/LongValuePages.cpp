#include "makestore/LongValuePages.h"

#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/LongValue.h"

namespace makestore {

jet::RowPointer LongValuePages::addPiece(jet::ByteView piece) {
  if (!pages_.empty()) {
    jet::DataPageEditor editor(space_.layout(), space_.page(pages_.back()), {});
    if (const auto slot = editor.add(piece, jet::SlotMark::Row)) return {pages_.back(), *slot};
  }
  pages_.push_back(space_.allocate());
  space_.put(pages_.back(), jet::DataPageEditor::newPage(space_.layout(), jet::kLongValueOwner));
  jet::DataPageEditor editor(space_.layout(), space_.page(pages_.back()), {});
  return {pages_.back(), editor.add(piece, jet::SlotMark::Row).value()};
}

jet::Bytes LongValuePages::write(jet::ByteView value) {
  jet::LongValueHead head;
  head.length = static_cast<std::uint32_t>(value.size());
  if (value.size() <= space_.layout().longestInline) {
    head.inlineBytes = value;
    return head.encode();
  }
  if (value.size() <= space_.layout().longestPiece) {
    head.form = jet::LongValueHead::Form::Single;
    head.first = addPiece(value);
    return head.encode();
  }
  // Each piece names the next, so the last one is written first.
  head.form = jet::LongValueHead::Form::Chain;
  const std::size_t most = space_.layout().longestPiece - jet::RowPointer::kSize;
  for (std::size_t end = value.size(); end > 0;) {
    const std::size_t start = (end - 1) / most * most;
    jet::Bytes piece(jet::RowPointer::kSize);
    jet::putRowPointer(piece, jet::LongValueHead::kNextPiece, head.first);
    jet::appendBytes(piece, value.subspan(start, end - start));
    head.first = addPiece(piece);
    end = start;
  }
  return head.encode();
}

void LongValuePages::finish() {
  space_.writeMap(maps_.owned, pages_);
  space_.writeMap(maps_.free, space_.withRoom(pages_));
}

}  // namespace makestore
