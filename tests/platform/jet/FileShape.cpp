#include "platform/jet/FileShape.h"

#include <algorithm>

#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/DataPage.h"
#include "platform/jet/format/IndexPage.h"
#include "platform/jet/format/UsageMap.h"

namespace jettest {
namespace {

void collect(const jet::TableSource& source, jet::PageNumber number, FileShape::Index& index) {
  const auto page =
      jet::IndexPage::decode(source.pager.layout(), *source.pager.read(number, {}), {});
  index.levels.resize(std::max<std::size_t>(index.levels.size(), page.level + 1U));
  ++index.levels[page.level];
  if (page.leaf) return;
  for (const jet::IndexEntry& entry : page.entries) {
    index.bounds.push_back(entry.bytes);
    collect(source, entry.child, index);
  }
  collect(source, page.tail, index);
}

FileShape::Map mapAt(const jet::TableSource& source, jet::RowPointer at) {
  const auto page = source.pager.read(at.page, {});
  const jet::DataPage rows(source.pager.layout(), *page, {});
  const jet::Slot slot = rows.slot(at.slot);
  const jet::UsageMap map = jet::UsageMap::decode(rows.bytes(slot), {});
  const auto isThere = [](jet::PageNumber bitmap) { return bitmap != jet::kNoPage; };
  return {map.kind == jet::UsageMap::Kind::Reference, map.firstPage, slot.length,
          std::ranges::count_if(map.bitmapPages, isThere)};
}

void compareMaps(const FileShape::Map& before, const FileShape::Map& after, const std::string& name,
                 std::set<std::string>& kinds) {
  if (!before.isReference && after.isReference)
    kinds.insert(name + " turned into references");
  else if (after.bitmaps > before.bitmaps)
    kinds.insert(name + " given a bitmap");
  else if (after.length > before.length)
    kinds.insert(name + " lengthened");
  else if (after.firstPage != before.firstPage)
    kinds.insert(name + " shifted");
}

void compareIndexes(const FileShape::Index& indexBefore, const FileShape::Index& indexAfter,
                    std::set<std::string>& kinds) {
  const std::vector<int>& before = indexBefore.levels;
  const std::vector<int>& after = indexAfter.levels;
  if (before == after && indexBefore.bounds != indexAfter.bounds) kinds.insert("bound tightened");
  if (after.size() > before.size()) {
    kinds.insert("root grown");
    kinds.insert("root grown to level " + std::to_string(after.size() - 1));
    return;
  }
  for (std::size_t level = 0; level < after.size(); ++level) {
    const std::string page = level == 0 ? "leaf" : "node";
    const std::string where = level == 0 ? "" : " at level " + std::to_string(level);
    if (after[level] > before[level]) kinds.insert(page + " split" + where);
    if (after[level] < before[level]) kinds.insert(page + " unlinked" + where);
  }
}

}  // namespace

std::optional<jet::RowPointer> bodyOf(const jet::Table& table, jet::RowId row) {
  jet::Pager& pager = table.source().pager;
  const auto page = pager.read(row.page, {});
  const jet::DataPage rows(pager.layout(), *page, {});
  const jet::Slot slot = rows.slot(row.slot);
  if (!slot.pointer) return std::nullopt;
  return jet::rowPointerAt(rows.bytes(slot), jet::MovedRow::kBody);
}

FileShape shapeOf(const jet::Table& table) {
  const jet::TableSource& source = table.source();
  FileShape shape;
  shape.freePages = mapAt(source, {jet::kGlobalMapPage, jet::SlotNumber(0)});
  shape.maps.push_back(mapAt(source, source.definition.ownedPages));
  shape.maps.push_back(mapAt(source, source.definition.freePages));
  for (const jet::IndexDefinition& index : source.definition.indexes) {
    shape.maps.push_back(mapAt(source, index.map));
    collect(source, index.root, shape.indexes.emplace_back());
  }
  return shape;
}

std::set<std::string> differencesBetween(const FileShape& before, const FileShape& after) {
  std::set<std::string> kinds;
  if (!before.body && !after.body) kinds.insert("in its slot");
  if (!before.body && after.body) kinds.insert("moved");
  if (before.body && after.body && before.body != after.body) kinds.insert("moved again");
  if (before.body && !after.body) kinds.insert("moved back");
  for (std::size_t i = 0; i < after.indexes.size(); ++i)
    compareIndexes(before.indexes[i], after.indexes[i], kinds);
  compareMaps(before.freePages, after.freePages, "global map", kinds);
  for (std::size_t i = 0; i < after.maps.size(); ++i)
    compareMaps(before.maps[i], after.maps[i], "map", kinds);
  return kinds;
}

}  // namespace jettest
