#include "platform/jet/engine/TableSource.h"

#include <algorithm>
#include <utility>

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

OpenDataPage readDataPage(const TableSource& source, PageNumber number, const Location& from) {
  Pager::Page page = source.pager.read(number, from);
  const DataPage rows(source.pager.layout(), *page, source.location(number));
  if (rows.owner() != source.definitionPage)
    raiseDamaged(rows.location(), u"it belongs to another table");
  return {std::move(page), rows};
}

bool findRow(const TableSource& source, RowId id, const OpenDataPage& home, FoundRow& found) {
  if (id.slot.value() >= home.rows.slotCount()) return false;
  Slot slot = home.rows.slot(id.slot);
  if (!slot.isRow()) return false;
  found.page = home.page;
  found.body = {id.page, id.slot};
  found.bytes = home.rows.bytes(slot);
  for (int steps = 0; slot.pointer; ++steps) {
    const Location from = source.location(found.body.page);
    if (steps == kMostPointerSteps) raiseDamaged(from, u"a row that moved can't be followed");
    if (found.bytes.size() < RowPointer::kSize)
      raiseDamaged(
          from, u"the pointer of a row that moved is too short",
          {.offset = MovedRow::kBody, .size = RowPointer::kSize, .available = found.bytes.size()});
    found.body = rowPointerAt(found.bytes, MovedRow::kBody);
    OpenDataPage next = readDataPage(source, found.body.page, from);
    slot = next.rows.slot(found.body.slot);
    found.bytes = next.rows.bytes(slot);
    found.page = std::move(next.page);
    if (slot.isDeleted()) raiseDamaged(from, u"a row that moved has lost its body");
  }
  return true;
}

std::optional<OpenDataPage> findDataPage(const TableSource& source, PageNumber number) {
  Pager::Page page = source.pager.read(number, source.location(source.definitionPage));
  if ((*page)[PageHead::kType] != static_cast<std::uint8_t>(PageType::Data)) return std::nullopt;
  const DataPage rows(source.pager.layout(), *page, source.location(number));
  if (rows.owner() != source.definitionPage) return std::nullopt;
  return OpenDataPage{std::move(page), rows};
}

bool findRow(const TableSource& source, RowId id, FoundRow& found) {
  const std::optional<OpenDataPage> home = findDataPage(source, id.page);
  return home && findRow(source, id, *home, found);
}

}  // namespace jet
