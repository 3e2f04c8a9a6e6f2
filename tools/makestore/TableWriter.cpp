#include "makestore/TableWriter.h"

#include <algorithm>
#include <compare>
#include <stdexcept>
#include <variant>
#include <vector>

#include "makestore/EmptyDefinition.h"
#include "makestore/IndexTree.h"
#include "makestore/RowWriter.h"
#include "platform/jet/format/IndexKey.h"
#include "platform/jet/format/TableDefinition.h"
#include "platform/runtime/CodePage.h"

namespace makestore {
namespace {

[[noreturn]] void refuse(const StoreTable& table, const Index& index, const char* what) {
  throw std::invalid_argument("index " + runtime::toUtf8(index.name) + " of " +
                              runtime::toUtf8(table.name()) + ": " + what);
}

struct Entry {
  jet::IndexEntry entry;
  bool hasNull = false;
};

/// The row's value in the column for its key: a null in a Boolean column is False.
runtime::Variant keyValue(const jet::ColumnDefinition& column, const runtime::Variant& value) {
  const bool isFalse = column.type == jet::ColumnType::Boolean && value.isNull();
  return isFalse ? runtime::Variant(false) : value;
}

/// The entries of all rows, in the index's order.
std::vector<Entry> entriesOf(jet::Version version, const StoreTable& table, const Index& index,
                             const jet::TableDefinition& definition,
                             const jet::IndexDefinition& indexDefinition,
                             const std::vector<jet::RowId>& rowIds) {
  std::vector<Entry> entries;
  for (std::size_t row = 0; row < table.rows().size(); ++row) {
    if (table.rows()[row].placement == Placement::Deleted) continue;
    jet::Bytes key;
    std::size_t nulls = 0;
    for (const jet::KeyColumn& part : indexDefinition.columns) {
      const jet::ColumnDefinition& column = definition.columns[part.number.value()];
      const runtime::Variant value =
          keyValue(column, table.rows()[row].values[part.number.value()]);
      if (value.isNull()) ++nulls;
      if (!jet::appendKey(version, column, part.ascending, value, key))
        refuse(table, index, "a value has no known key");
    }
    if (nulls > 0 && index.required)
      refuse(table, index, "a key has a null, but the index is required");
    if (nulls == indexDefinition.columns.size() && index.ignoreNulls) continue;
    entries.push_back({jet::IndexEntry::of(key, rowIds[row]), nulls > 0});
  }
  std::ranges::sort(entries, [](const Entry& a, const Entry& b) {
    return std::is_lt(jet::compareBytes(a.entry.bytes, b.entry.bytes));
  });
  return entries;
}

void writeIndex(PageSpace& space, jet::PageNumber definitionPage, const StoreTable& table,
                const Index& index, const jet::TableDefinition& definition,
                jet::IndexDefinition& indexDefinition, const std::vector<jet::RowId>& rowIds) {
  std::vector<jet::IndexEntry> ordered;
  for (Entry& each :
       entriesOf(space.version(), table, index, definition, indexDefinition, rowIds)) {
    const bool isDuplicate =
        !ordered.empty() && std::is_eq(jet::compareBytes(ordered.back().key(), each.entry.key()));
    if (isDuplicate && index.unique && !each.hasNull)
      refuse(table, index, "two rows have the same key");
    if (!isDuplicate) ++indexDefinition.entryCounter;
    ordered.push_back(std::move(each.entry));
  }
  const IndexTree tree = buildIndex(space, definitionPage, ordered, index.packed);
  indexDefinition.root = tree.root;
  space.writeMap(indexDefinition.map, tree.pages);
}

std::uint32_t lastAutonumber(const StoreTable& table) {
  std::int32_t last = 0;
  for (std::size_t i = 0; i < table.columns().size(); ++i) {
    if (!table.columns()[i].autonumber) continue;
    for (const StoreTable::Row& row : table.rows())
      if (const auto* number = std::get_if<std::int32_t>(&row.values[i].get()))
        last = std::max(last, *number);
  }
  return static_cast<std::uint32_t>(last);
}

void writeDefinition(PageSpace& space, jet::PageNumber definitionPage,
                     const jet::TableDefinition& definition) {
  std::vector<jet::PageNumber> numbers{definitionPage};
  const std::size_t needed =
      jet::TableDefinition::pagesNeeded(definition.version, definition.encode().size());
  while (numbers.size() < needed) numbers.push_back(space.allocate());
  std::vector<jet::Bytes> pages = definition.encodePages(numbers);
  for (std::size_t i = 0; i < numbers.size(); ++i) space.put(numbers[i], std::move(pages[i]));
}

}  // namespace

void writeTable(PageSpace& space, StoreTable& table, jet::PageNumber definitionPage,
                TableKind kind) {
  jet::TableDefinition definition = emptyDefinition(space, table, kind);
  RowWriter rows(space, table, definitionPage, definition);
  rows.writeAll();
  definition.rowCount = static_cast<std::uint32_t>(std::ranges::count_if(
      table.rows(),
      [](const StoreTable::Row& row) { return row.placement != Placement::Deleted; }));
  definition.lastAutonumber = lastAutonumber(table);
  for (std::size_t i = 0; i < table.indexes().size(); ++i)
    writeIndex(space, definitionPage, table, table.indexes()[i], definition, definition.indexes[i],
               rows.ids());
  writeDefinition(space, definitionPage, definition);
}

}  // namespace makestore
