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
  for (const RowKey::Part& part : key.parts())
    index.columns.push_back({part.column, part.ascending});
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
    : source_(std::make_unique<TableSource>(pager, std::move(name), definitionPage)) {
  for (const ColumnDefinition& column : source_->columns)
    columns_.push_back({.name = column.name,
                        .type = column.type,
                        .size = column.length,
                        .autonumber = column.autonumber,
                        .scale = column.scale});
  for (std::size_t i = 0; i < source_->definition.indexes.size(); ++i)
    indexes_.push_back(describe(*source_, IndexNumber(i)));
}

Table::~Table() = default;

const std::u16string& Table::name() const {
  return source_->name;
}

PageNumber Table::definitionPage() const {
  return source_->definitionPage;
}

TableIdentity Table::identity() const {
  return {name(), definitionPage()};
}

ColumnIdentity Table::identity(ColumnIndex column) const {
  return identityOf(source_->column(column));
}

std::uint32_t Table::rowCount() const {
  return source_->definition.rowCount;
}

std::optional<ColumnIndex> Table::columnNamed(std::u16string_view name) const {
  const auto found = std::ranges::find_if(
      columns_, [&](const Column& column) { return sameName(column.name, name); });
  if (found == columns_.end()) return std::nullopt;
  return ColumnIndex(found - columns_.begin());
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
  return std::make_unique<TableScan>(*source_);
}

std::unique_ptr<Cursor> Table::walk(IndexNumber index, const IndexRange& range) const {
  return std::make_unique<IndexCursor>(*source_, index, range);
}

RowReader Table::reader() const {
  return RowReader(*source_);
}

}  // namespace jet
