#include "makestore/EmptyDefinition.h"

#include "platform/jet/format/Header.h"
#include "platform/jet/format/StoredValue.h"

namespace makestore {
namespace {

std::size_t storedLength(jet::Version version, const Column& column) {
  switch (column.type) {
    case jet::ColumnType::Boolean:
      return 1;
    case jet::ColumnType::Text:
      return jet::layoutOf(version).characterSize * column.length;
    case jet::ColumnType::Binary:
      return column.length;
    case jet::ColumnType::Byte:
    case jet::ColumnType::Integer:
    case jet::ColumnType::Long:
    case jet::ColumnType::Currency:
    case jet::ColumnType::Single:
    case jet::ColumnType::Double:
    case jet::ColumnType::DateTime:
    case jet::ColumnType::Ole:
    case jet::ColumnType::Memo:
    case jet::ColumnType::Guid:
    case jet::ColumnType::Numeric:
    case jet::ColumnType::Block:
      break;
  }
  return jet::typeSize(column.type).value_or(0);
}

/// True for types whose values always have the same size: they are in the row's fixed area.
bool isFixed(jet::ColumnType type) {
  return jet::typeSize(type).has_value();
}

jet::ColumnDefinition definitionOf(jet::Version version, const Column& column, TableKind kind) {
  const bool jet3 = version == jet::Version::Jet3;
  jet::ColumnDefinition definition;
  definition.name = column.name;
  definition.type = column.type;
  definition.fixed = isFixed(column.type);
  definition.autonumber = column.autonumber;
  definition.length = static_cast<std::uint16_t>(storedLength(version, column));
  definition.flags = column.flags;
  if (jet::isText(column.type) || kind == TableKind::System || jet3)
    definition.sortLanguage = jet::Header::kGeneral;
  if (jet3) definition.codePage = jet::Header().codePage;
  definition.compressed = jet::isText(column.type) && column.compressed && !jet3;
  if (column.type == jet::ColumnType::Numeric) {
    definition.precision = column.precision;
    definition.scale = column.scale;
  }
  return definition;
}

/// Assigns offsets in the fixed area to the fixed columns, one after the other, and slots to the
/// variable ones. Memo and OLE columns have the last slots, but not in the engine's own tables,
/// which keep the columns' order. A fixed column's slot is the number of variable ones before it.
void assignOffsets(const StoreTable& table, TableKind kind, jet::TableDefinition& definition) {
  const auto comesLast = [kind](jet::ColumnType type) {
    return kind == TableKind::User && jet::isLongValue(type);
  };
  std::uint16_t fixedEnd = 0;
  std::uint16_t nextSlot = 0;
  std::uint16_t nextLastSlot = 0;
  for (const Column& column : table.columns())
    if (!isFixed(column.type) && !comesLast(column.type)) ++nextLastSlot;
  for (const Column& column : table.columns()) {
    jet::ColumnDefinition defined = definitionOf(definition.version, column, kind);
    defined.number = jet::ColumnNumber(definition.columns.size());
    std::uint16_t& slot = comesLast(column.type) ? nextLastSlot : nextSlot;
    defined.variableSlot = jet::VariableSlot(slot);
    if (defined.fixed) {
      defined.fixedOffset = fixedEnd;
      fixedEnd = static_cast<std::uint16_t>(fixedEnd + jet::typeSize(column.type).value_or(0));
    } else {
      ++slot;
      ++definition.variableSlots;
    }
    definition.columns.push_back(std::move(defined));
  }
}

std::uint8_t flagsOf(jet::Version version, const Index& index) {
  unsigned flags = version == jet::Version::Jet4 ? jet::IndexDefinition::kJet4 : 0U;
  if (index.unique) flags |= jet::IndexDefinition::kUnique;
  if (index.ignoreNulls) flags |= jet::IndexDefinition::kIgnoreNulls;
  if (index.required) flags |= jet::IndexDefinition::kRequired;
  return static_cast<std::uint8_t>(flags);
}

void addIndexes(PageSpace& space, const StoreTable& table, TableKind kind,
                jet::TableDefinition& definition) {
  for (const Index& index : table.indexes()) {
    jet::IndexDefinition indexDefinition;
    for (const KeyPart& part : index.columns)
      indexDefinition.columns.push_back(
          {jet::ColumnNumber(table.columnIndex(part.column)), part.ascending});
    indexDefinition.map = space.newMap();
    indexDefinition.flags = flagsOf(definition.version, index);
    jet::LogicalIndex logical;
    logical.name = index.name;
    logical.number = jet::LogicalIndexNumber(definition.indexes.size());
    logical.index = jet::IndexNumber(definition.indexes.size());
    if (index.primary) logical.kind = jet::LogicalIndex::Kind::PrimaryKey;
    if (kind == TableKind::User) logical.cascadeUpdates = logical.cascadeDeletes = 0;
    definition.indexes.push_back(std::move(indexDefinition));
    definition.logicalIndexes.push_back(std::move(logical));
  }
}

}  // namespace

jet::TableDefinition emptyDefinition(PageSpace& space, const StoreTable& table, TableKind kind) {
  jet::TableDefinition definition;
  definition.version = space.version();
  definition.kind = kind == TableKind::System ? jet::TableDefinition::kSystemTable
                                              : jet::TableDefinition::kUserTable;
  definition.maxColumns = static_cast<std::uint16_t>(table.columns().size());
  definition.ownedPages = space.newMap();
  definition.freePages = space.newMap();
  assignOffsets(table, kind, definition);
  for (const jet::ColumnDefinition& column : definition.columns)
    if (jet::isLongValue(column.type)) {
      const jet::RowPointer owned = space.newMap();
      definition.longValueMaps.push_back({column.number, owned, space.newMap()});
    }
  addIndexes(space, table, kind, definition);
  return definition;
}

}  // namespace makestore
