// Files that the builder makes, checked by readers that share no code with it.

#include <gtest/gtest.h>

#include <stdexcept>

#include "makestore/StoreBuilder.h"
#include "platform/jet/StoreFiles.h"

namespace {

using jet::ColumnType;
using jettest::checkerOutput;
using jettest::checkerVerdict;
using makestore::Index;
using makestore::Placement;
using makestore::SelectQuery;
using makestore::StoreBuilder;
using makestore::StoreTable;
using runtime::Variant;

class StoreBuilderTest : public testing::Test {
 protected:
  std::filesystem::path write(StoreBuilder& store, const char* name = "made.mdb") {
    const std::filesystem::path path = scratch_.folder() / name;
    store.write(path);
    return path;
  }
  std::string exported(const std::filesystem::path& file, const std::string& table,
                       const std::string& options = "-Q -0 '\\N' -d '|' -b hex") {
    return jettest::outputOf("mdb-export " + options + " -T '%Y-%m-%d %H:%M:%S' '" + file.string() +
                             "' " + table);
  }

  jettest::Scratch scratch_;
};

std::u16string text(std::size_t length, char16_t letter = u'x') {
  return std::u16string(length, letter);
}

/// A GUID as the exporter writes it, with one hyphen less than usual. With `-b hex` it writes the
/// codes of these characters in hexadecimal.
constexpr const char* kGuid = "{01020304-0506-0708-090A0B0C0D0E0F10}";
std::string hex(const std::string& text) {
  std::string digits;
  for (const char c : text) {
    digits += "0123456789ABCDEF"[c >> 4];
    digits += "0123456789ABCDEF"[c & 15];
  }
  return digits;
}

TEST_F(StoreBuilderTest, EveryColumnTypeReadsBack) {
  StoreBuilder store;
  StoreTable& table = store.table(u"All");
  table.column({.name = u"key", .autonumber = true})
      .column({.name = u"yes", .type = ColumnType::Boolean})
      .column({.name = u"byte", .type = ColumnType::Byte})
      .column({.name = u"int", .type = ColumnType::Integer})
      .column({.name = u"money", .type = ColumnType::Currency})
      .column({.name = u"single", .type = ColumnType::Single})
      .column({.name = u"double", .type = ColumnType::Double})
      .column({.name = u"date", .type = ColumnType::DateTime})
      .column({.name = u"bytes", .type = ColumnType::Binary, .length = 8})
      .column(makestore::Column::text(u"text", 20))
      .column({.name = u"ole", .type = ColumnType::Ole})
      .column({.name = u"memo", .type = ColumnType::Memo})
      .column({.name = u"guid", .type = ColumnType::Guid})
      .column({.name = u"numeric", .type = ColumnType::Numeric, .precision = 10, .scale = 2});
  for (const makestore::Column& column : table.columns())
    if (column.type != ColumnType::Ole && column.type != ColumnType::Memo) {
      Index down = Index::plain(column.name);
      down.name += u" down";
      down.columns[0].ascending = false;
      table.index(Index::plain(column.name)).index(down);
    }
  const runtime::Guid guid{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};
  table.row({1, true, std::uint8_t{200}, std::int16_t{-5}, runtime::Currency{-12345}, 0.5F, -2.25,
             runtime::Date{38143.25}, runtime::Binary{0xAB, 0x01}, u"Café \u20AC",
             runtime::Binary{9, 8}, u"Note", guid, runtime::Decimal{u"-123.45"}});
  table.row({7, false, std::uint8_t{0}, std::int16_t{32767}, runtime::Currency{10000}, -1.5F, 1e300,
             runtime::Date{0.75}, runtime::Binary{1, 2, 3, 4, 5, 6, 7, 8}, u"Plain",
             runtime::Binary{}, u"Longer than a row takes, so kept outside of it: " + text(30),
             guid, runtime::Decimal{u"0.01"}});
  table.row({8});
  const std::filesystem::path file = write(store);
  EXPECT_EQ(checkerVerdict(file), "sound");
  EXPECT_EQ(exported(file, "All"),
            "key|yes|byte|int|money|single|double|date|bytes|text|ole|memo|guid|numeric\n"
            "1|1|200|-5|-1.2345|0.5|-2.25|2004-06-05 06:00:00|AB01|Café €|0908|Note|" +
                hex(kGuid) +
                "|-123.45\n7|0|0|32767|1.0000|-1.5|1e+300|1899-12-30 18:00:00|0102030405060708|"
                "Plain||Longer than a row takes, so kept outside of it: " +
                std::string(30, 'x') + "|" + hex(kGuid) +
                "|0.01\n8|0|\\N|\\N|\\N|\\N|\\N|\\N|\\N|\\N|\\N|\\N|\\N|\\N\n");
  const std::string dumped = checkerOutput("--dump All", file);
  EXPECT_NE(dumped.find("-1.2345\t0.5\t-2.25\t2004-06-05 06:00:00\tab01\tCafé €\t0908\tNote\t"
                        "{01020304-0506-0708-090A-0B0C0D0E0F10}\t-123.45"),
            std::string::npos)
      << dumped;
}

TEST_F(StoreBuilderTest, LongValuesReadBackInEveryForm) {
  StoreBuilder store;
  StoreTable& table = store.table(u"Notes");
  table.column({.name = u"note", .type = ColumnType::Memo, .compressed = false});
  std::string expected;
  // Two bytes a character. 32 is the longest value in the row, 33 the shortest outside it, 2038 the
  // longest single piece, 2039 the shortest chain, 20000 a long chain.
  for (const std::size_t length : {0U, 1U, 32U, 33U, 2038U, 2039U, 20000U}) {
    table.row({text(length, u'a' + length % 26)});
    expected += std::string(length, static_cast<char>('a' + length % 26)) + "\n";
  }
  table.row({text(5000, u'\u00E9')});
  for (int i = 0; i < 5000; ++i) expected += "é";
  const std::filesystem::path file = write(store);
  EXPECT_EQ(checkerVerdict(file), "sound");
  EXPECT_EQ(exported(file, "Notes", "-H -Q"), expected + "\n");
}

TEST_F(StoreBuilderTest, MovedRowsReadAsRowsAndDeletedOnesDoNot) {
  StoreBuilder store;
  StoreTable& table = store.table(u"Rows");
  table.column({.name = u"id"}).column(makestore::Column::text(u"name", 50));
  table.index(Index::primaryKey(u"id")).index(Index::plain(u"name"));
  for (int i = 0; i < 300; ++i) {
    const Placement placement = i % 50 == 10   ? Placement::Moved
                                : i % 50 == 20 ? Placement::Deleted
                                               : Placement::Plain;
    table.row({i, u"Name " + text(30)}, placement);
  }
  const std::filesystem::path file = write(store);
  EXPECT_EQ(checkerVerdict(file), "sound");
  EXPECT_NE(checkerOutput("-v", file).find(" 6 moved"), std::string::npos);
  for (const std::string& dump : {checkerOutput("--dump Rows", file), exported(file, "Rows")}) {
    EXPECT_EQ(jettest::split(dump, '\n').size(), 1U + 300 - 6);
    EXPECT_NE(dump.find("\n110"), std::string::npos);
    EXPECT_EQ(dump.find("\n120"), std::string::npos);
  }
}

TEST_F(StoreBuilderTest, LongDefinitionsAndWideTablesReadBack) {
  StoreBuilder store;
  StoreTable& table = store.table(u"Wide");
  std::vector<Variant> row;
  for (int i = 0; i < 120; ++i) {
    const std::string number = std::to_string(1000 + i);
    const std::u16string name = text(40, u'n') + std::u16string(number.begin(), number.end());
    if (i % 2 == 0) table.column({.name = name});
    if (i % 2 == 1) table.column(makestore::Column::text(name, 10));
    row.push_back(i % 2 == 0 ? Variant(i) : Variant(u"t"));
  }
  table.row(row);
  const std::filesystem::path file = write(store);
  EXPECT_EQ(checkerVerdict(file), "sound");
  const std::vector<std::string> cells =
      jettest::split(jettest::split(exported(file, "Wide"), '\n').at(1), '|');
  ASSERT_EQ(cells.size(), 120U);
  EXPECT_EQ(cells[118], "118");
  EXPECT_EQ(cells[119], "t");
}

TEST_F(StoreBuilderTest, LargeFilesAndReferenceMapsListEveryPage) {
  for (const bool references : {false, true}) {
    StoreBuilder store;
    store.referenceMaps(references).freePages(3);
    // So large that a window of the usual length covers neither the table nor the file.
    StoreTable& table = store.table(u"Large");
    table.column({.name = u"id"}).column(makestore::Column::text(u"name", 255));
    for (int i = 0; i < 7000; ++i) table.row({i, text(255, u'\u20AC')});
    store.table(u"Small").column({.name = u"id"}).row({1});
    const std::filesystem::path file = write(store);
    EXPECT_EQ(checkerVerdict(file), "sound") << references;
    EXPECT_EQ(checkerOutput("-v", file).find("neither free nor claimed"), std::string::npos);
    EXPECT_EQ(jettest::split(exported(file, "Large"), '\n').size(), 7001U);
    EXPECT_EQ(exported(file, "Small"), "id\n1\n");
  }
}

TEST_F(StoreBuilderTest, SavedQueriesAreRebuiltAsDefined) {
  StoreBuilder store;
  store.table(u"Order Details").column({.name = u"id"}).column({.name = u"qty"});
  store.table(u"T").column({.name = u"id"});
  store.query(SelectQuery()
                  .parameter(u"Which", 4)
                  .distinct()
                  .top(10)
                  .column(u"d.id")
                  .column(u"Sum(d.qty)", u"total")
                  .from(u"Order Details", u"d")
                  .from(u"T")
                  .from(u"T", u"u")
                  .rightJoin(u"d", u"T", u"d.id = T.id")
                  .leftJoin(u"d", u"u", u"T.id = u.id")
                  .where(u"d.qty>0")
                  .groupBy(u"d.id")
                  .having(u"Sum(d.qty)>1")
                  .orderBy(u"d.id", true)
                  .orderBy(u"Sum(d.qty)")
                  .named(u"qryParts"));
  store.query(SelectQuery().allColumns().from(u"T").named(u"qryStar"));
  store.query(makestore::unionQuery(u"qryBoth", u"SELECT id FROM T", u"SELECT qty FROM T", true));
  const std::filesystem::path file = write(store);
  EXPECT_EQ(checkerVerdict(file), "sound");
  EXPECT_EQ(checkerOutput("--queries", file),
            "-- qryBoth\nSELECT id FROM T\nUNION ALL SELECT qty FROM T;\n\n"
            "-- qryParts\nPARAMETERS Which Long;\n"
            "SELECT DISTINCT TOP 10 d.id, Sum(d.qty) AS total\n"
            "FROM ([Order Details] AS d RIGHT JOIN T ON d.id = T.id) LEFT JOIN T AS u ON T.id = "
            "u.id\nWHERE d.qty>0\nGROUP BY d.id\nHAVING Sum(d.qty)>1\n"
            "ORDER BY d.id DESC, Sum(d.qty);\n\n"
            "-- qryStar\nSELECT *\nFROM T;\n\n");
}

TEST(StoreBuilder, RefusesRowsThatBreakTheTablesRules) {
  const auto refused = [](const std::vector<std::vector<Variant>>& rows, const Index& index) {
    StoreBuilder store;
    StoreTable& table = store.table(u"T");
    table.column({.name = u"id"}).column(makestore::Column::text(u"name", 5)).index(index);
    try {
      for (const std::vector<Variant>& row : rows) table.row(row);
      store.build();
      return false;
    } catch (const std::invalid_argument&) {
      return true;
    }
  };
  const Index key = Index::primaryKey(u"id");
  Index unique = Index::plain(u"name");
  unique.unique = true;
  EXPECT_FALSE(refused({{1, u"12345"}, {2}}, key));
  EXPECT_FALSE(refused({{1}, {2}}, unique));
  EXPECT_TRUE(refused({{1}, {1}}, key));
  EXPECT_TRUE(refused({{1, u"same"}, {2, u"SAME "}}, unique));
  EXPECT_TRUE(refused({{Variant()}}, key));
  EXPECT_TRUE(refused({{1, u"123456"}}, key));
  EXPECT_TRUE(refused({{u"1"}}, key));
  EXPECT_TRUE(refused({{1, u"x", 3}}, key));
  EXPECT_TRUE(refused({{1, u"\u4E00"}}, unique));
  EXPECT_TRUE(refused({{1}}, Index::plain(u"missing")));
}

}  // namespace
