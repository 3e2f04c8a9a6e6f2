#include "platform/jet/engine/Constraints.h"

#include <algorithm>

#include "platform/jet/engine/IndexWalk.h"
#include "platform/jet/engine/RowReader.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/LongValue.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

std::u16string fieldName(const TableSource& source, const ColumnDefinition& column) {
  return source.name + u"." + column.name;
}

bool isEmptyText(const runtime::Variant& value) {
  const auto* text = std::get_if<std::u16string>(&value.get());
  return text != nullptr && text->empty();
}

bool isPrimary(const TableSource& source, IndexNumber index) {
  return std::ranges::any_of(source.definition.logicalIndexes, [&](const LogicalIndex& logical) {
    return logical.index == index && logical.kind == LogicalIndex::Kind::PrimaryKey;
  });
}

/// False where a key column's value is stored outside the row: it can't be read before it is
/// written.
bool keyIsInRow(const TableSource& source, const RowKey& key, const Row& row) {
  return std::ranges::all_of(key.parts(), [&](const RowKey::Part& part) {
    const ColumnDefinition& column = source.column(part.column);
    if (!isLongValue(column.type)) return true;
    const std::optional<ByteView> stored = row.stored(part.column);
    return !stored || stored->empty() ||
           LongValueHead::decode(*stored, source.location(row.id().page)).form ==
               LongValueHead::Form::Inline;
  });
}

/// True when another row has this key: the index has an entry for it that isn't stale.
bool isOthersKey(const TableSource& source, IndexNumber index, const RowKey& key, ByteView bytes,
                 RowId own) {
  IndexWalk walk(source, index, bytes);
  RowReader reader(source);
  Bytes rowKey;
  while (walk.next()) {
    const ByteView entry = walk.entry();
    if (compareBytes(entry.first(entry.size() - kEntryRowSize), bytes) != 0) return false;
    if (walk.row() == own || !reader.find(walk.row())) continue;
    if (!key.make(reader.row(), rowKey) || rowKey == Bytes(bytes.begin(), bytes.end())) return true;
  }
  return false;
}

}  // namespace

void checkValues(const TableSource& source, std::span<const PropertyBlock> properties,
                 std::span<const ColumnValue> values) {
  for (const ColumnValue& each : values) {
    const ColumnDefinition& column = source.column(each.column);
    const auto block = std::ranges::find_if(properties, [&](const PropertyBlock& candidate) {
      return candidate.type == PropertyBlock::kColumn && sameName(candidate.name, column.name);
    });
    const auto flag = [&](std::u16string_view name) {
      return block != properties.end() && block->flag(name);
    };
    if (each.value.isNull() && flag(PropertyName::kRequired))
      throw error::nullForbidden(fieldName(source, column));
    if (isEmptyText(each.value) && !flag(PropertyName::kAllowZeroLength))
      throw error::emptyTextForbidden(fieldName(source, column));
  }
}

std::vector<KeyChange> keyChanges(const TableSource& source, const Row& before, const Row& after,
                                  std::span<const ColumnValue> values) {
  std::vector<KeyChange> changes;
  for (std::size_t i = 0; i < source.definition.indexes.size(); ++i) {
    const IndexNumber number(i);
    const IndexDefinition& index = source.index(number);
    const RowKey key(source, number);
    if (!key.covers(values)) continue;
    const Location location = source.location(index.root);
    if (!key.isSupported())
      raiseUnsupported(location, u"an index is of a kind whose keys are not known");
    if ((index.required() || isPrimary(source, number)) && key.hasNull(after))
      throw error::nullInIndex();
    Bytes bytes;
    KeyChange change;
    change.index = number;
    change.hadEntry = !(index.ignoresNulls() && key.isAllNull(before));
    if (change.hadEntry && key.make(before, bytes))
      change.oldEntry = IndexEntry::of(bytes, before.id()).bytes;
    if (!(index.ignoresNulls() && key.isAllNull(after))) {
      if (!keyIsInRow(source, key, after))
        raiseUnsupported(location, u"an index on so long a text is not kept");
      if (!key.make(after, bytes))
        raiseUnsupported(location, u"a character has no known position in the order of an index");
      change.newEntry = IndexEntry::of(bytes, after.id()).bytes;
      if (index.unique() && change.newEntry != change.oldEntry && !key.hasNull(after) &&
          isOthersKey(source, number, key, bytes, after.id()))
        throw error::duplicateKey();
    }
    changes.push_back(std::move(change));
  }
  return changes;
}

}  // namespace jet
