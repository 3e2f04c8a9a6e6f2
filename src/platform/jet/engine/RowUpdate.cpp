#include "platform/jet/engine/RowUpdate.h"

#include <algorithm>
#include <memory>

#include "platform/jet/engine/Relationships.h"
#include "platform/jet/engine/RowBuilder.h"
#include "platform/jet/engine/ValueConversion.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/StoredValue.h"

namespace jet {
namespace {

std::vector<PropertyBlock> propertiesOf(ObjectCatalog& catalog, const TableIdentity& table) {
  std::optional<std::vector<PropertyBlock>> properties = catalog.properties(table);
  if (!properties) throw error::rowChanged();
  return std::move(*properties);
}

/// A row whose bytes no page has yet.
struct UnwrittenRow {
  UnwrittenRow(const TableSource& source, RowId id, Bytes bytes)
      : page(std::make_shared<const Bytes>(std::move(bytes))),
        row(source, id, {.page = page, .body = {id.page, id.slot}, .bytes = *page}) {}

  Pager::Page page;
  Row row;
};

}  // namespace

RowUpdate::RowUpdate(Pager& pager, ObjectCatalog& catalog, const RowChange& change)
    : pager_(pager),
      catalog_(catalog),
      properties_(propertiesOf(catalog, change.table)),
      source_(pager, change.table.name, change.table.definitionPage),
      id_(change.row),
      asRead_(columnsNow(change.asRead)),
      given_(columnsNow(change.values)),
      changes_(pager),
      maps_(changes_, source_),
      placement_(changes_, maps_, source_),
      longValues_(changes_, maps_, source_) {
  if (!findRow(source_, id_, found_)) throw error::rowChanged();
  row_ = Row(source_, id_, found_);
  for (const ColumnValue& each : asRead_)
    if (row_.value(each.column) != each.value) throw error::rowChanged();
}

/// The values by the columns' indexes in the current definition.
std::vector<ColumnValue> RowUpdate::columnsNow(std::span<const FieldValue> fields) const {
  std::vector<ColumnValue> values;
  values.reserve(fields.size());
  for (const FieldValue& field : fields) {
    const auto found = std::ranges::find(source_.definition.columns, field.column.number,
                                         &ColumnDefinition::number);
    if (found == source_.definition.columns.end() || identityOf(*found) != field.column)
      throw error::rowChanged();
    values.push_back({ColumnIndex(found - source_.definition.columns.begin()), field.value});
  }
  return values;
}

std::vector<ColumnValue> RowUpdate::converted() const {
  std::vector<ColumnValue> result;
  for (const ColumnValue& each : given_)
    result.push_back(
        {each.column, convertTo(source_.version(), source_.column(each.column), each.value)});
  return result;
}

void RowUpdate::storeValues(RowParts& parts, std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values) {
    const ColumnDefinition& column = source_.column(each.column);
    if (column.type == ColumnType::Boolean) {
      setBoolean(parts, column, std::get<bool>(each.value.get()));
      continue;
    }
    if (each.value.isNull()) {
      setStored(parts, column, std::nullopt);
      continue;
    }
    std::optional<Bytes> stored = encodeValue(source_.version(), column, each.value);
    if (!stored) throw error::tooLarge();
    if (column.fixed && stored->size() != typeSize(column.type).value_or(0))
      raiseUnsupported(source_.location(source_.definitionPage),
                       u"texts and bytes of fixed length are not written");
    if (isLongValue(column.type)) stored = longValues_.store(column, *stored);
    setStored(parts, column, stored);
  }
}

void RowUpdate::run(const RuleTest& holds) {
  const std::vector<ColumnValue> values = converted();
  checkValues(source_, properties_, values);
  checkRules(source_, properties_, row_, values, holds);
  std::vector<ColumnValue> changed = values;
  std::erase_if(changed,
                [&](const ColumnValue& each) { return row_.value(each.column) == each.value; });
  if (changed.empty())
    removeStaleEntries(values);
  else
    changeRow(changed);
  placement_.noteFreeSpace();
  longValues_.noteFreeSpace();
  if (changes_.empty()) return;
  changes_.commit();
  pager_.forget();
}

void RowUpdate::changeRow(std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values)
    if (source_.column(each.column).autonumber)
      throw error::fieldNotUpdatable(source_.column(each.column).name);
  RowParts parts = partsOf(source_, row_);
  storeValues(parts, values);
  const UnwrittenRow after(source_, id_, parts.encode(source_.version()));
  const std::vector<KeyChange> keys = keyChanges(source_, row_, after.row, values);
  checkRelationships(catalog_, source_, row_, after.row, keys);
  write(parts, keys, values);
}

std::vector<runtime::Variant> RowUpdate::readAgain() {
  if (!findRow(source_, id_, found_)) throw error::rowChanged();
  row_ = Row(source_, id_, found_);
  std::vector<runtime::Variant> values;
  values.reserve(asRead_.size());
  for (const ColumnValue& each : asRead_) values.push_back(row_.value(each.column));
  return values;
}

void RowUpdate::write(const RowParts& parts, std::span<const KeyChange> keys,
                      std::span<const ColumnValue> values) {
  placement_.store(id_, found_, parts);
  std::vector<IndexEditor> editors;
  std::vector<IndexNumber> grown;
  for (const KeyChange& key : keys) {
    IndexEditor& editor = editors.emplace_back(changes_, maps_, source_, key.index);
    if (!key.newEntry || key.newEntry == key.oldEntry) continue;
    if (editor.insert({*key.newEntry, {}}) == IndexEditor::Insertion::NewKey)
      grown.push_back(key.index);
  }
  incrementCounters(grown);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const KeyChange& key = keys[i];
    if (!key.hadEntry || key.newEntry == key.oldEntry) continue;
    editors[i].removeOld(id_, key);
  }
  dropLongValues(values);
}

void RowUpdate::dropLongValues(std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values) {
    const ColumnDefinition& column = source_.column(each.column);
    if (!isLongValue(column.type)) continue;
    if (const std::optional<ByteView> stored = row_.stored(each.column))
      longValues_.drop(column, *stored);
  }
}

/// The counters are on the definition's first page, before all parts that can be long.
void RowUpdate::incrementCounters(const std::vector<IndexNumber>& indexes) {
  if (indexes.empty()) return;
  Bytes page = *changes_.read(source_.definitionPage, source_.location(source_.definitionPage));
  for (const IndexNumber index : indexes) {
    const std::size_t at = TableDefinition::entryCounterAt(source_.version(), index);
    if (at + sizeof(std::uint32_t) <= page.size()) putU32(page, at, u32At(page, at) + 1);
  }
  changes_.stage(WriteStep::Counters, source_.definitionPage, std::move(page));
}

/// An earlier attempt may have been interrupted when the row was already written: removes the
/// entries that the row has under other keys in the indexes on these columns. A body without a
/// pointer may remain.
void RowUpdate::removeStaleEntries(std::span<const ColumnValue> values) {
  for (std::size_t i = 0; i < source_.definition.indexes.size(); ++i) {
    const IndexNumber index(i);
    const RowKey key(source_, index);
    if (!key.covers(values)) continue;
    const bool leftOut = source_.index(index).ignoresNulls() && key.isAllNull(row_);
    std::optional<Bytes> own;
    if (Bytes bytes; !leftOut && key.make(row_, bytes)) own = IndexEntry::of(bytes, id_).bytes;
    if (own || leftOut) IndexEditor(changes_, maps_, source_, index).clean(id_, own);
  }
}

}  // namespace jet
