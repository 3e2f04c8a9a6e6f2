#include "platform/jet/engine/RowUpdate.h"

#include <algorithm>
#include <memory>

#include "platform/jet/engine/LongValueWriter.h"
#include "platform/jet/engine/RowBuilder.h"
#include "platform/jet/engine/StrayBodies.h"
#include "platform/jet/engine/ValueConversion.h"
#include "platform/jet/format/StoredValue.h"
#include "platform/runtime/RunTimeError.h"

namespace jet {
namespace {

constexpr std::int32_t kRowChanged = -2147217864;

[[noreturn]] void raiseRowChanged() {
  throw runtime::RunTimeError(kRowChanged,
                              u"Row cannot be located for updating. Some values may have been "
                              u"changed since it was last read.");
}

const ColumnDefinition& columnOf(const TableSource& source, const ColumnValue& value) {
  return source.columns[static_cast<std::size_t>(value.column)];
}

bool isAmong(std::span<const ColumnValue> values, int column) {
  return std::ranges::find(values, column, &ColumnValue::column) != values.end();
}

/// A row whose bytes no page has yet.
struct UnwrittenRow {
  UnwrittenRow(const TableSource& source, RowId id, Bytes bytes)
      : page(std::make_shared<const Bytes>(std::move(bytes))),
        row(source, id, {.page = page, .bodyPage = id.page, .bodySlot = id.slot, .bytes = *page}) {}

  Pager::Page page;
  Row row;
};

}  // namespace

RowUpdate::RowUpdate(Pager& pager, Catalog& catalog, const TableSource& source, RowId id)
    : catalog_(catalog),
      source_(source),
      id_(id),
      changes_(pager),
      maps_(changes_, source),
      placement_(changes_, maps_, source) {
  if (!findRow(source, id, found_)) raiseRowChanged();
  row_ = Row(source, id, found_);
}

void RowUpdate::expect(std::span<const ColumnValue> asRead) const {
  for (const ColumnValue& each : asRead)
    if (row_.value(each.column) != each.value) raiseRowChanged();
}

std::vector<ColumnValue> RowUpdate::converted(std::span<const ColumnValue> values) const {
  std::vector<ColumnValue> result;
  for (const ColumnValue& each : values)
    result.push_back(
        {each.column, convertTo(source_.version(), columnOf(source_, each), each.value)});
  return result;
}

void RowUpdate::storeValues(RowParts& parts, std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values) {
    const ColumnDefinition& column = columnOf(source_, each);
    if (column.type == ColumnType::Boolean) {
      setBoolean(parts, column, std::get<bool>(each.value.get()));
      continue;
    }
    if (each.value.isNull()) {
      setStored(parts, column, std::nullopt);
      continue;
    }
    std::optional<Bytes> stored = encodeValue(source_.version(), column, each.value);
    if (!stored) raiseTooLarge();
    if (column.fixed && stored->size() != typeSize(column.type).value_or(0))
      raiseUnsupported(source_.place(source_.definitionPage),
                       u"texts and bytes of fixed length are not written");
    if (isLongValue(column.type))
      stored = storeLongValue(changes_, maps_, source_, column, *stored);
    setStored(parts, column, stored);
  }
}

void RowUpdate::run(std::span<const ColumnValue> given) {
  std::vector<ColumnValue> values = converted(given);
  checkValues(catalog_, source_, values);
  const std::vector<ColumnValue> all = values;
  std::erase_if(values,
                [&](const ColumnValue& each) { return row_.value(each.column) == each.value; });
  for (const ColumnValue& each : values)
    if (columnOf(source_, each).autonumber)
      throw runtime::RunTimeError(kEngineError, u"Cannot update '" + columnOf(source_, each).name +
                                                    u"'; field not updateable.");
  if (values.empty()) {
    // Perhaps this change was interrupted when the row was already written.
    cleanUp(all);
  } else {
    RowParts parts = partsOf(source_, row_);
    storeValues(parts, values);
    const UnwrittenRow after(source_, id_, parts.encode(source_.version()));
    const std::vector<KeyChange> keys = keyChanges(source_, row_, after.row, values);
    checkRelationships(catalog_, source_, row_, after.row, keys);
    write(parts, keys, values);
  }
  placement_.noteFreeSpace();
  if (!changes_.empty()) changes_.commit();
}

void RowUpdate::write(const RowParts& parts, std::span<const KeyChange> keys,
                      std::span<const ColumnValue> values) {
  placement_.place(id_, found_, parts);
  std::vector<IndexEditor> editors;
  std::vector<std::size_t> grown;
  for (const KeyChange& key : keys) {
    IndexEditor& editor = editors.emplace_back(changes_, maps_, source_, key.index);
    if (!key.newEntry || key.newEntry == key.oldEntry) continue;
    if (editor.insert({*key.newEntry, 0}) == IndexEditor::Insertion::NewKey)
      grown.push_back(key.index);
  }
  raiseCounters(grown);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const KeyChange& key = keys[i];
    if (!key.hadEntry || key.newEntry == key.oldEntry) continue;
    const bool removed = key.oldEntry && editors[i].remove(*key.oldEntry);
    if (!removed || editors[i].sawLeftovers()) editors[i].clean(id_, key.newEntry);
  }
  dropLongValues(values);
}

void RowUpdate::dropLongValues(std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values) {
    const ColumnDefinition& column = columnOf(source_, each);
    if (!isLongValue(column.type)) continue;
    if (const std::optional<ByteView> stored = row_.stored(each.column))
      dropLongValue(changes_, maps_, source_, column, *stored);
  }
}

/// The counters stand on the definition's first page, in front of all that can be long.
void RowUpdate::raiseCounters(const std::vector<std::size_t>& indexes) {
  if (indexes.empty()) return;
  Bytes page = *changes_.read(source_.definitionPage, source_.place(source_.definitionPage));
  for (const std::size_t index : indexes) {
    const std::size_t at = TableDefinition::entryCounterAt(source_.version(), index);
    if (at + 4 <= page.size()) putU32(page, at, u32At(page, at) + 1);
  }
  changes_.stage(WriteStep::Counters, source_.definitionPage, std::move(page));
}

/// Removes what an interrupted run of this change left behind: the row's entries under other keys,
/// and a body that is a copy of the row but for the columns of the change.
void RowUpdate::cleanUp(std::span<const ColumnValue> values) {
  for (std::size_t i = 0; i < source_.definition.indexes.size(); ++i) {
    const RowKey key(source_, i);
    const bool changed = std::ranges::any_of(
        key.parts(), [&](const RowKey::Part& part) { return isAmong(values, part.column); });
    const bool leftOut = source_.definition.indexes[i].ignoresNulls() && key.isAllNull(row_);
    std::optional<Bytes> own;
    if (Bytes bytes; !leftOut && key.make(row_, bytes)) own = IndexEntry::of(bytes, id_).bytes;
    if (changed && (own || leftOut)) IndexEditor(changes_, maps_, source_, i).clean(id_, own);
  }
  for (const RowPointer stray : strayBodies(source_)) {
    FoundRow found;
    found.page = readDataPage(source_, stray.page, source_.place(source_.definitionPage));
    found.bodyPage = stray.page;
    found.bodySlot = stray.slot;
    const DataPage rows(changes_.layout(), *found.page, source_.place(stray.page));
    found.bytes = rows.bytes(rows.slot(stray.slot));
    const Row body(source_, id_, found);
    bool same = true;
    for (int column = 0; same && column < static_cast<int>(source_.columns.size()); ++column)
      same = isAmong(values, column) || body.value(column) == row_.value(column);
    if (same) placement_.dropBody(stray);
  }
}

}  // namespace jet
