#include "platform/jet/engine/Table.h"

#include <algorithm>

#include "platform/jet/engine/IndexCursor.h"
#include "platform/jet/engine/TableScan.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/TextKey.h"

namespace jet {
namespace {

Index describe(const TableSource& source, IndexNumber number) {
  const IndexDefinition& definition = source.index(number);
  const RowKey key(source, number);
  Index index;
  index.columns = key.parts();
  index.unique = definition.unique();
  index.ignoreNulls = definition.ignoresNulls();
  index.seekable = key.isOrdered();
  for (const LogicalIndex& logical : source.definition.logicalIndexes) {
    if (logical.index != number) continue;
    if (index.name.empty()) index.name = logical.name;
    index.primary = index.primary || logical.kind == LogicalIndex::Kind::PrimaryKey;
  }
  return index;
}

}  // namespace

Table::Table(Pager& pager, std::u16string name, PageNumber definitionPage)
    : source_(pager, std::move(name), definitionPage) {
  for (std::size_t i = 0; i < source_.definition.indexes.size(); ++i)
    indexes_.push_back(describe(source_, IndexNumber(i)));
}

std::optional<ColumnIndex> Table::columnNamed(std::u16string_view name) const {
  const auto found = std::ranges::find_if(
      columns(), [&](const ColumnDefinition& column) { return sameName(column.name, name); });
  if (found == columns().end()) return std::nullopt;
  return ColumnIndex(found - columns().begin());
}

std::optional<IndexNumber> Table::indexOn(
    const std::vector<std::u16string_view>& columnNames) const {
  const auto leadsWith = [&](const Index& index) {
    if (!index.seekable || index.columns.size() < columnNames.size()) return false;
    for (std::size_t i = 0; i < columnNames.size(); ++i)
      if (columnNamed(columnNames[i]) != index.columns[i].column) return false;
    return true;
  };
  const auto found = std::ranges::find_if(indexes_, leadsWith);
  if (found == indexes_.end()) return std::nullopt;
  return IndexNumber(found - indexes_.begin());
}

std::unique_ptr<Cursor> Table::scan() const {
  return std::make_unique<TableScan>(source_);
}

std::unique_ptr<Cursor> Table::walk(IndexNumber index, const IndexRange& range) const {
  return std::make_unique<IndexCursor>(source_, index, range);
}

RowReader Table::reader() const {
  return RowReader(source_);
}

}  // namespace jet
