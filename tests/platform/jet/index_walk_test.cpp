#include <gtest/gtest.h>

#include <algorithm>

#include "platform/jet/StoreFiles.h"

namespace {

using namespace jettest;
using jet::RowId;
using runtime::Variant;

std::vector<RowId> idsOf(jet::Cursor& cursor) {
  std::vector<RowId> ids;
  while (cursor.next()) ids.push_back(cursor.row().id());
  return ids;
}

std::vector<RowId> sorted(std::vector<RowId> ids) {
  std::ranges::sort(ids);
  return ids;
}

/// True when the row must be in the index.
bool belongs(const jet::Row& row, const jet::Index& index) {
  return !index.ignoreNulls || std::ranges::any_of(index.columns, [&](const auto& part) {
    return !row.isNull(part.column);
  });
}

template <class Use>
void forEachIndex(Use use) {
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, wide(file.path.string()), jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path)) {
      if (object.kind != jet::ObjectKind::Table) continue;
      const jet::Table& table = database.table(object);
      for (std::uint32_t i = 0; i < table.indexes().size(); ++i) {
        SCOPED_TRACE(file.path.string() + " " + narrow(object.name) + " " +
                     narrow(table.indexes()[i].name));
        use(table, table.indexes()[i], jet::IndexNumber(i));
      }
    }
  }
}

TEST(IndexWalk, ReturnsEachRowOnceAndFindsEachByItsKey) {
  int walked = 0;
  int seekable = 0;
  forEachIndex([&](const jet::Table& table, const jet::Index& index, jet::IndexNumber number) {
    std::vector<RowId> expected;
    std::vector<std::vector<Variant>> keys;
    const auto scan = table.scan();
    while (scan->next()) {
      if (!belongs(scan->row(), index)) continue;
      expected.push_back(scan->row().id());
      keys.emplace_back();
      for (const auto& part : index.columns) keys.back().push_back(scan->row().value(part.column));
    }
    EXPECT_EQ(sorted(idsOf(*table.walk(number, {}))), sorted(expected));
    ++walked;
    if (!index.seekable) return;
    ++seekable;
    for (std::size_t i = 0; i < keys.size(); i += 1 + keys.size() / 500) {
      const std::vector<RowId> found = idsOf(*table.walk(number, {.equal = keys[i]}));
      EXPECT_TRUE(std::ranges::count(found, expected[i]) == 1) << "row " << i;
      const bool single = index.unique && std::ranges::none_of(keys[i], &Variant::isNull);
      EXPECT_LE(found.size(), single ? 1U : expected.size());
    }
  });
  EXPECT_GE(walked, 120);
  EXPECT_GE(seekable, 120);
}

/// Numbers of every type as a double, for comparing; absent for texts and all other types.
std::optional<double> number(const Variant& value) {
  if (const auto* v = std::get_if<std::int32_t>(&value.get())) return *v;
  if (const auto* v = std::get_if<std::int16_t>(&value.get())) return *v;
  if (const auto* v = std::get_if<std::uint8_t>(&value.get())) return *v;
  if (const auto* v = std::get_if<double>(&value.get())) return *v;
  if (const auto* v = std::get_if<runtime::Date>(&value.get())) return v->days;
  return std::nullopt;
}

TEST(IndexWalk, OrdersNumbersAndCutsRangesInEitherDirection) {
  int ranges = 0;
  forEachIndex([&](const jet::Table& table, const jet::Index& index, jet::IndexNumber number_) {
    if (!index.seekable || index.columns.size() != 1 || table.rowCount() < 3) return;
    const jet::ColumnIndex column = index.columns[0].column;
    std::vector<std::pair<RowId, std::optional<double>>> rows;
    const auto walk = table.walk(number_, {});
    while (walk->next()) rows.emplace_back(walk->row().id(), number(walk->row().value(column)));
    std::vector<double> values;
    for (const auto& row : rows)
      if (row.second) values.push_back(*row.second);
    if (values.size() < 3) return;
    EXPECT_TRUE(index.columns[0].ascending ? std::ranges::is_sorted(values)
                                           : std::ranges::is_sorted(values, std::greater<>()));
    std::ranges::sort(values);
    const double low = values[values.size() / 4];
    const double high = values[3 * values.size() / 4];
    std::vector<RowId> expected;
    std::vector<RowId> notNull;
    for (const auto& row : rows) {
      if (row.second) notNull.push_back(row.first);
      if (row.second && *row.second >= low && *row.second <= high) expected.push_back(row.first);
    }
    jet::IndexRange range;
    range.lower = low;
    range.upper = high + 0.25;
    EXPECT_EQ(idsOf(*table.walk(number_, range)), expected);
    EXPECT_EQ(idsOf(*table.walk(number_, {.notNull = true})), notNull);
    range.lower = 1e300;
    range.upper.reset();
    EXPECT_TRUE(idsOf(*table.walk(number_, range)).empty());
    ++ranges;
  });
  EXPECT_GE(ranges, 20);
}

TEST(IndexWalk, FindsFreeSlotsAndNamesWhateverTheirCase) {
  const StoreFile store = referenceStore("corner");
  jet::Database database(store.path, u"", jet::Password{store.password});
  const jet::Table& table = tableNamed(database, u"TBLSTOCK");
  const jet::ColumnIndex description = table.columnNamed(u"Description").value();
  const jet::IndexNumber index = table.indexOn({u"description"}).value();
  const auto free = table.walk(index, {.equal = {Variant()}});
  int count = 0;
  while (free->next()) {
    EXPECT_TRUE(free->row().isNull(description));
    ++count;
  }
  EXPECT_EQ(count, 300 - 173);
  // A text, its key, and another spelling of it lead to the same rows.
  const std::vector<RowId> papers = idsOf(*table.walk(index, {.equal = {u"DAILY PAPER  "}}));
  EXPECT_EQ(papers.size(), 2U);
  std::string key;
  jet::RowReader reader = table.reader();
  ASSERT_TRUE(reader.find(papers[0]));
  ASSERT_TRUE(reader.row().sortKey(description, key));
  EXPECT_EQ(idsOf(*table.walk(index, {.equal = {runtime::Binary(key.begin(), key.end())}})),
            papers);
}

}  // namespace
