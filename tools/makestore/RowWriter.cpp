#include "makestore/RowWriter.h"

#include <algorithm>
#include <stdexcept>
#include <variant>

#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/Layout.h"
#include "platform/jet/format/RowContent.h"
#include "platform/jet/format/StoredText.h"
#include "platform/jet/format/StoredValue.h"
#include "platform/runtime/CodePage.h"

namespace makestore {
namespace {

constexpr char16_t kFilling = u'.';

bool isTrue(const runtime::Variant& value) {
  const bool* flag = std::get_if<bool>(&value.get());
  return flag != nullptr && *flag;
}

/// Number of characters by which the text may grow, one byte each; 0 where they would take more, as
/// in a text that isn't stored compressed.
std::size_t growth(const runtime::Variant& value, std::size_t longest) {
  const auto* text = std::get_if<std::u16string>(&value.get());
  if (text == nullptr || text->size() < jet::kShortestCompressed || text->size() >= longest)
    return 0;
  const bool bytes =
      std::ranges::all_of(*text, [](char16_t unit) { return unit != 0 && unit < 0x100; });
  return bytes ? longest - text->size() : 0;
}

/// The value's bytes; nullopt where it has another type than the column, or is too long for it.
std::optional<jet::Bytes> checkedBytes(jet::Version version, const jet::ColumnDefinition& column,
                                       const runtime::Variant& value) {
  try {
    std::optional<jet::Bytes> stored = jet::encodeValue(version, column, value);
    if (!stored || jet::isLongValue(column.type)) return stored;
    const auto* text = std::get_if<std::u16string>(&value.get());
    const std::size_t length =
        text != nullptr ? jet::layoutOf(version).characterSize * text->size() : stored->size();
    return length <= column.length ? stored : std::nullopt;
  } catch (const std::bad_variant_access&) {
    return std::nullopt;
  }
}

}  // namespace

RowWriter::RowWriter(PageSpace& space, StoreTable& table, jet::PageNumber definitionPage,
                     const jet::TableDefinition& definition)
    : space_(space), table_(table), definitionPage_(definitionPage), definition_(definition) {
  for (const jet::LongValueMaps& maps : definition.longValueMaps)
    longValues_.emplace_back(space, maps);
  if (table.fillColumn() && space.version() == jet::Version::Jet3)
    throw std::invalid_argument("pages can be filled in Jet 4 stores only");
  // Filling a page writes rows again, which would leave the first copy of a long value in the file.
  if (table.fillColumn() && !longValues_.empty())
    throw std::invalid_argument("pages of a table with memo or OLE columns can't be filled");
}

jet::Bytes RowWriter::storedValue(const jet::ColumnDefinition& column,
                                  const runtime::Variant& value) {
  std::optional<jet::Bytes> stored = checkedBytes(space_.version(), column, value);
  if (!stored)
    throw std::invalid_argument("column " + runtime::toUtf8(column.name) + " of " +
                                runtime::toUtf8(table_.name()) + " can't take one of its values");
  if (!jet::isLongValue(column.type)) return *std::move(stored);
  return std::ranges::find(longValues_, column.number, &LongValuePages::column)->write(*stored);
}

jet::Bytes RowWriter::encodeRow(std::size_t row, Extent extent) {
  const std::vector<runtime::Variant>& values = table_.rows()[row].values;
  jet::RowParts parts;
  parts.columnCount = definition_.maxColumns;
  parts.hasValue.resize(definition_.maxColumns);
  parts.variable.resize(definition_.variableSlots);
  parts.hasVariable = definition_.variableSlots > 0;
  for (std::size_t i = 0; i < definition_.columns.size(); ++i) {
    const jet::ColumnDefinition& column = definition_.columns[i];
    if (column.type == jet::ColumnType::Boolean) {
      parts.hasValue[column.number.value()] = isTrue(values[i]);
      continue;
    }
    if (column.fixed) parts.fixedArea.resize(std::size_t{column.fixedOffset} + column.length);
    if (values[i].isNull() || (extent == Extent::FixedOnly && !column.fixed)) continue;
    parts.hasValue[column.number.value()] = true;
    jet::Bytes stored = storedValue(column, values[i]);
    if (column.fixed)
      jet::putBytes(parts.fixedArea, column.fixedOffset, stored);
    else
      parts.variable[column.variableSlot.value()] = std::move(stored);
  }
  jet::Bytes bytes = parts.encode(space_.version());
  if (bytes.size() > space_.layout().longestRow)
    throw std::invalid_argument("a row of " + runtime::toUtf8(table_.name()) + " is too long");
  return bytes;
}

void RowWriter::openPage() {
  pages_.push_back(space_.allocate());
  space_.put(pages_.back(), jet::DataPageEditor::newPage(space_.layout(), definitionPage_));
  rowsOfPage_.clear();
}

void RowWriter::writeRow(std::size_t row) {
  const Placement placement = table_.rows()[row].placement;
  const bool moved = placement == Placement::Moved;
  // The slot of a moved row keeps the length of the old, shorter row, which had only its fixed
  // columns.
  const jet::Bytes bytes = encodeRow(row, moved ? Extent::FixedOnly : Extent::Full);
  if (pages_.empty() || !jet::DataPageEditor(space_.layout(), space_.page(pages_.back()), {})
                             .hasRoomFor(bytes.size())) {
    if (!pages_.empty()) fillPage();
    openPage();
  }
  jet::DataPageEditor editor(space_.layout(), space_.page(pages_.back()), {});
  const jet::SlotNumber slot =
      editor.add(bytes, moved ? jet::SlotMark::Pointer : jet::SlotMark::Row).value();
  ids_.push_back({pages_.back(), slot});
  if (placement == Placement::Plain) rowsOfPage_.push_back(row);
  if (placement == Placement::Deleted) editor.markDeleted(slot);
}

/// Lengthens texts of the page's rows until the page has no byte left.
void RowWriter::fillPage() {
  if (!table_.fillColumn()) return;
  const std::size_t fill = table_.columnIndex(*table_.fillColumn());
  for (const std::size_t row : rowsOfPage_) {
    jet::DataPageEditor editor(space_.layout(), space_.page(pages_.back()), {});
    runtime::Variant& value = table_.rows()[row].values[fill];
    const std::size_t more =
        std::min(editor.freeBytes(), growth(value, table_.columns()[fill].length));
    if (more == 0) continue;
    value = std::get<std::u16string>(value.get()) + std::u16string(more, kFilling);
    editor.replace(ids_[row].slot, encodeRow(row, Extent::Full), jet::SlotMark::Row);
  }
}

/// Writes the body of a moved row to the last page and makes its slot point there.
void RowWriter::writeBody(std::size_t row) {
  const jet::Bytes bytes = encodeRow(row, Extent::Full);
  if (!jet::DataPageEditor(space_.layout(), space_.page(pages_.back()), {})
           .hasRoomFor(bytes.size()))
    openPage();
  jet::DataPageEditor last(space_.layout(), space_.page(pages_.back()), {});
  const jet::RowPointer body{pages_.back(), last.add(bytes, jet::SlotMark::Body).value()};
  jet::DataPageEditor home(space_.layout(), space_.page(ids_[row].page), {});
  const jet::ByteView old = home.bytes(ids_[row].slot);
  jet::Bytes pointer(old.begin(), old.end());
  jet::putRowPointer(pointer, jet::MovedRow::kBody, body);
  home.replace(ids_[row].slot, pointer, jet::SlotMark::Pointer);
}

void RowWriter::writeAll() {
  for (std::size_t row = 0; row < table_.rows().size(); ++row) writeRow(row);
  for (std::size_t row = 0; row < table_.rows().size(); ++row)
    if (table_.rows()[row].placement == Placement::Moved) writeBody(row);
  space_.writeMap(definition_.ownedPages, pages_);
  space_.writeMap(definition_.freePages, space_.withRoom(pages_));
  for (LongValuePages& values : longValues_) values.finish();
}

}  // namespace makestore
