#include "platform/jet/engine/Relationships.h"

#include <algorithm>

#include "platform/jet/engine/IndexWalk.h"
#include "platform/jet/engine/RowReader.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/IndexKey.h"

namespace jet {
namespace {

std::u16string tableName(ObjectCatalog& catalog, PageNumber definitionPage) {
  for (const CatalogObject& object : catalog.objects())
    if (object.kind == ObjectKind::Table && definitionPageOf(object.id) == definitionPage)
      return object.name;
  return {};
}

/// The index of the other table that a relationship uses.
IndexNumber otherIndex(const TableSource& other, const LogicalIndex& relationship) {
  const auto& all = other.definition.logicalIndexes;
  const auto found = std::ranges::find(all, relationship.otherIndex, &LogicalIndex::number);
  if (found == all.end() || found->index.value() >= other.definition.indexes.size())
    raiseDamaged(other.location(other.definitionPage), u"a relationship lacks its index");
  return found->index;
}

/// True when index `theirs` of the other table has an entry for the values that the row has in the
/// columns of `index`.
bool hasMatch(const TableSource& source, IndexNumber index, const Row& row,
              const TableSource& other, IndexNumber theirs) {
  const RowKey own(source, index);
  const RowKey their(other, theirs);
  Bytes key;
  bool made = own.parts().size() == their.parts().size() && their.isSupported();
  for (std::size_t i = 0; made && i < own.parts().size(); ++i) {
    const ColumnIndex column = own.parts()[i].column;
    const RowKey::Part& part = their.parts()[i];
    const ColumnDefinition& definition = other.column(part.column);
    made = source.column(column).type == definition.type &&
           appendKey(other.version(), definition, part.ascending, row.value(column), key);
  }
  if (!made)
    raiseUnsupported(source.location(source.definitionPage), u"a relationship can't be checked");
  IndexWalk walk(other, theirs, key);
  RowReader reader(other);
  while (walk.next()) {
    const ByteView entry = walk.entry();
    if (compareBytes(entry.first(entry.size() - kEntryRowSize), key) != 0) return false;
    Bytes theirKey;
    if (reader.find(walk.row()) && their.make(reader.row(), theirKey) && theirKey == key)
      return true;
  }
  return false;
}

}  // namespace

void checkRelationships(ObjectCatalog& catalog, const TableSource& source, const Row& before,
                        const Row& after, std::span<const KeyChange> changes) {
  for (const LogicalIndex& logical : source.definition.logicalIndexes) {
    if (logical.kind != LogicalIndex::Kind::ForeignKey) continue;
    const auto change = std::ranges::find(changes, logical.index, &KeyChange::index);
    if (change == changes.end() || change->oldEntry == change->newEntry) continue;
    const TableSource other(source.pager, tableName(catalog, logical.otherTable),
                            logical.otherTable);
    const bool referenced = logical.side == LogicalIndex::kReferenced;
    const Row& row = referenced ? before : after;
    if (RowKey(source, logical.index).hasNull(row)) continue;
    const bool match = hasMatch(source, logical.index, row, other, otherIndex(other, logical));
    if (referenced && match && logical.cascadeUpdates == LogicalIndex::kCascades)
      raiseUnsupported(source.location(source.definitionPage),
                       u"related rows would have to change with it");
    if (referenced && match) throw error::hasRelatedRows(other.name);
    if (!referenced && !match) throw error::lacksRelatedRow(other.name);
  }
}

}  // namespace jet
