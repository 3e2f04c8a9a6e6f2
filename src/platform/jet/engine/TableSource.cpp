#include "platform/jet/engine/TableSource.h"

#include <algorithm>

#include "platform/jet/format/DataPage.h"

namespace jet {
namespace {

/// Pages of the longest definition; 255 columns and 32 indexes take far fewer.
constexpr std::size_t kMostDefinitionPages = 256;
/// A pointer usually leads straight to the body; a few more steps are followed.
constexpr int kMostPointerSteps = 16;

}  // namespace

TableSource::TableSource(Pager& pages, std::u16string tableName, PageNumber page)
    : pager(pages), name(std::move(tableName)), definitionPage(page) {
  std::vector<PageNumber> chain;
  const Bytes content = readDefinition(pager, location(page), chain);
  definition = TableDefinition::decode(pager.header().version, content, location(page));
  std::ranges::sort(definition.columns, {}, &ColumnDefinition::number);
}

ColumnIdentity identityOf(const ColumnDefinition& column) {
  return {.number = column.number, .name = column.name, .type = column.type};
}

Bytes readDefinition(Pager& pager, const Location& first, std::vector<PageNumber>& pages) {
  Bytes content;
  PageNumber number = first.page;
  while (number != kNoPage) {
    if (pages.size() == kMostDefinitionPages)
      raiseDamaged(first, u"the table's definition has no end");
    const Pager::Page page = pager.read(number, first);
    const std::size_t front = pages.empty() ? 0 : TableDefinition::kPageHeader;
    pages.push_back(number);
    number = TableDefinition::nextPage(*page, first.at(number));
    appendBytes(content, ByteView(*page).subspan(front));
  }
  return content;
}

Pager::Page readDataPage(const TableSource& source, PageNumber number, const Location& from) {
  Pager::Page page = source.pager.read(number, from);
  const DataPage opened(source.pager.layout(), *page, source.location(number));
  if (opened.owner() != source.definitionPage)
    raiseDamaged(source.location(number), u"it belongs to another table");
  return page;
}

bool findRow(const TableSource& source, RowId id, const Pager::Page& home, FoundRow& found) {
  const Layout& layout = source.pager.layout();
  const DataPage page(layout, *home, source.location(id.page));
  if (id.slot.value() >= page.slotCount()) return false;
  Slot slot = page.slot(id.slot);
  if (!slot.isRow()) return false;
  found = {.page = home, .body = {id.page, id.slot}, .bytes = page.bytes(slot)};
  for (int steps = 0; slot.pointer; ++steps) {
    const Location from = source.location(found.body.page);
    if (steps == kMostPointerSteps) raiseDamaged(from, u"a row that moved can't be followed");
    if (found.bytes.size() < RowPointer::kSize)
      raiseDamaged(
          from, u"the pointer of a row that moved is too short",
          {.offset = MovedRow::kBody, .size = RowPointer::kSize, .available = found.bytes.size()});
    found.body = rowPointerAt(found.bytes, MovedRow::kBody);
    found.page = readDataPage(source, found.body.page, from);
    const DataPage next(layout, *found.page, source.location(found.body.page));
    slot = next.slot(found.body.slot);
    found.bytes = next.bytes(slot);
    if (slot.isDeleted()) raiseDamaged(from, u"a row that moved has lost its body");
  }
  return true;
}

Pager::Page findDataPage(const TableSource& source, PageNumber number) {
  Pager::Page page = source.pager.read(number, source.location(source.definitionPage));
  if ((*page)[PageHead::kType] != static_cast<std::uint8_t>(PageType::Data)) return nullptr;
  const DataPage opened(source.pager.layout(), *page, source.location(number));
  return opened.owner() == source.definitionPage ? page : nullptr;
}

bool findRow(const TableSource& source, RowId id, FoundRow& found) {
  const Pager::Page home = findDataPage(source, id.page);
  return home && findRow(source, id, home, found);
}

}  // namespace jet
