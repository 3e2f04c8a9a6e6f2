#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "platform/jet/StoreFiles.h"

namespace {

using namespace jettest;
using jet::RowId;
using runtime::Variant;

/// All rows in the form of the independent checker's dump, which shows null as nothing.
std::vector<std::string> dumpedLines(const jet::Table& table) {
  std::vector<std::string> lines;
  const auto scan = table.scan();
  while (scan->next()) {
    std::string& line = lines.emplace_back();
    for (std::size_t i = 0; i < table.columns().size(); ++i) {
      const runtime::Variant value = scan->row().value(jet::ColumnIndex(i));
      line.append(i > 0 ? "\t" : "").append(value.isNull() ? "" : printed(value));
    }
  }
  return lines;
}

template <class Use>
void forEachTable(Use use) {
  for (const StoreFile& file : filesOfAllKinds()) {
    jet::Database database(file.path, wide(file.path.string()), jet::Password{file.password});
    for (const jet::CatalogObject& object : objectsOf(file.path))
      if (object.kind == jet::ObjectKind::Table)
        use(file.path, narrow(object.name), database.table(object));
  }
}

TEST(Reading, AgreesWithAnIndependentReaderOnEveryTable) {
  std::map<std::string, std::vector<std::filesystem::path>> filesByTable;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table&) {
    filesByTable[name].push_back(file);
  });
  std::map<std::string, std::map<std::filesystem::path, std::vector<std::string>>> dumps;
  for (const auto& [name, files] : filesByTable)
    dumps[name] = checkerLines("--dump '" + name + "'", files);
  int tables = 0;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table& table) {
    SCOPED_TRACE(file.string() + " " + name);
    std::vector<std::string>& theirs = dumps[name][file];
    ASSERT_FALSE(theirs.empty());
    std::string names;
    for (const jet::ColumnDefinition& column : table.columns()) names += narrow(column.name) + "\t";
    EXPECT_EQ(names, theirs.front() + "\t");
    theirs.erase(theirs.begin());
    std::vector<std::string> ours = dumpedLines(table);
    EXPECT_EQ(table.rowCount(), ours.size());
    std::ranges::sort(ours);
    std::ranges::sort(theirs);
    EXPECT_EQ(ours, theirs);
    ++tables;
  });
  EXPECT_GE(tables, 70);
}

std::vector<RowId> idsOf(jet::Cursor& cursor) {
  std::vector<RowId> ids;
  while (cursor.next()) ids.push_back(cursor.row().id());
  return ids;
}

template <class Use>
void forEachIndex(Use use) {
  forEachTable([&](const auto& file, const std::string& name, const jet::Table& table) {
    for (std::uint32_t i = 0; i < table.indexes().size(); ++i) {
      SCOPED_TRACE(file.string() + " " + name + " " + narrow(table.indexes()[i].name));
      use(table, table.indexes()[i], jet::IndexNumber(i));
    }
  });
}

TEST(IndexWalk, ReturnsEachRowOnceAndFindsEachByItsKey) {
  std::ptrdiff_t seekable = 0;
  forEachTable([&](const auto& file, const std::string& name, const jet::Table& table) {
    SCOPED_TRACE(file.string() + " " + name);
    seekable += std::ranges::count_if(table.indexes(), &jet::Index::seekable);
    EXPECT_EQ(indexProblems(table), std::vector<std::string>());
  });
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

TEST(IndexWalk, OrdersNumbersAndReturnsRangesInBothDirections) {
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

}  // namespace
