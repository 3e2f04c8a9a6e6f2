#include "platform/jet/engine/RowKey.h"

#include <algorithm>

#include "platform/jet/format/IndexKey.h"
#include "platform/jet/format/StoredValue.h"

namespace jet {

RowKey::RowKey(const TableSource& source, IndexNumber index) : source_(source), index_(index) {
  for (const KeyColumn& column : keyColumns()) {
    const auto at =
        std::ranges::find(source.definition.columns, column.number, &ColumnDefinition::number);
    if (at == source.definition.columns.end()) {
      supported_ = false;
      break;
    }
    const KeySupport support = keySupport(source.version(), *at, column.ascending);
    supported_ = supported_ && support != KeySupport::None;
    ordered_ = ordered_ && support == KeySupport::Ordered;
    parts_.push_back({ColumnIndex(at - source.definition.columns.begin()), column.ascending});
  }
  supported_ = supported_ && !parts_.empty();
  ordered_ = ordered_ && supported_;
}

const std::vector<KeyColumn>& RowKey::keyColumns() const {
  return source_.index(index_).columns;
}

bool RowKey::covers(std::span<const ColumnValue> values) const {
  return std::ranges::any_of(values, [&](const ColumnValue& each) {
    const ColumnNumber number = source_.column(each.column).number;
    return std::ranges::find(keyColumns(), number, &KeyColumn::number) != keyColumns().end();
  });
}

bool RowKey::make(const Row& row, Bytes& key) const {
  key.clear();
  return supported_ && std::ranges::all_of(parts_, [&](const Part& part) {
           return appendColumnKey(source_, row, part.column, part.ascending, key);
         });
}

bool RowKey::isAllNull(const Row& row) const {
  return parts_.size() == keyColumns().size() &&
         std::ranges::all_of(parts_, [&](const Part& part) { return row.isNull(part.column); });
}

bool RowKey::hasNull(const Row& row) const {
  return std::ranges::any_of(parts_, [&](const Part& part) { return row.isNull(part.column); });
}

bool appendColumnKey(const TableSource& source, const Row& row, ColumnIndex column, bool ascending,
                     Bytes& key) {
  const Version version = source.version();
  const ColumnDefinition& definition = source.column(column);
  if (isText(definition.type)) {
    std::string text;
    if (row.sortKey(column, text)) {
      const ByteView bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
      if (!isKnownTextKey(bytes) || keySupport(version, definition, ascending) == KeySupport::None)
        return false;
      appendTextPart(version, ascending, bytes, key);
      return true;
    }
  } else if (const std::optional<ByteView> stored = row.stored(column)) {
    requireSize(definition.type, *stored, row.content().location());
    const std::size_t size = typeSize(definition.type).value_or(stored->size());
    return appendStoredKey(version, definition, ascending, stored->first(size), key);
  }
  return appendKey(version, definition, ascending, row.value(column), key);
}

}  // namespace jet
