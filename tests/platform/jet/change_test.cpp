// The values that a change accepts, those that it refuses with the file untouched, random changes.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "makestore/StoreBuilder.h"
#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/jet/engine/MappedPages.h"
#include "platform/jet/engine/TableSource.h"
#include "platform/jet/format/TableDefinition.h"
#include "support/FileFaults.h"
#include "support/ProcessCopy.h"
#include "support/ProgramFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace jettest;
using runtime::Variant;
using support::errorNumberOf;

constexpr int kEngine = -2147467259;
constexpr int kMismatch = -2147217913;
constexpr int kTooLarge = -2147217833;
constexpr int kRowChanged = -2147217864;

/// A copy of a store, and one row in it that the tests change.
class RowTest : public testing::Test {
 protected:
  void use(const std::string& store, const std::u16string& table, const std::u16string& column,
           const Variant& value) {
    useFile(scratch_.copy(referenceStore(store).path), kStorePassword, table, column, value);
  }
  void useFile(const fs::path& file, const std::u16string& password, const std::u16string& table,
               const std::u16string& column, const Variant& value) {
    file_ = file;
    password_ = password;
    table_ = table;
    jet::Database database(file_, u"the file", jet::Password{password_});
    const jet::Table& rows = tableNamed(database, table);
    const jet::ColumnIndex key = rows.columnNamed(column).value();
    const auto scan = rows.scan();
    while (scan->next())
      if (scan->row().value(key) == value) row_ = scan->row().id();
    ASSERT_NE(row_, jet::RowId());
  }

  void change(const std::u16string& column, const Variant& value) {
    jet::Database database(file_, u"the file", jet::Password{password_});
    const jet::Table& table = tableNamed(database, table_);
    update(database, table, row_,
           std::vector<jet::ColumnValue>{{table.columnNamed(column).value(), value}});
  }

  std::string read(const std::u16string& column) {
    jet::Database database(file_, u"the file", jet::Password{password_});
    const jet::Table& table = tableNamed(database, table_);
    jet::RowReader reader = table.reader();
    return reader.find(row_) ? printed(reader.row().value(table.columnNamed(column).value())) : "";
  }

  std::string changed(const std::u16string& column, const Variant& value) {
    change(column, value);
    return read(column);
  }

  /// The error of a change that must leave the file unchanged, byte for byte.
  int refused(const std::u16string& column, const Variant& value) {
    const auto before = support::readFile(file_);
    const int number = errorNumberOf([&] { change(column, value); });
    EXPECT_TRUE(support::readFile(file_) == before);
    return number;
  }

  std::string verdict() const { return checkerVerdict(file_); }

  Scratch scratch_;
  fs::path file_;
  std::u16string password_;
  std::u16string table_;
  jet::RowId row_;
};

using UpdateValues = RowTest;

TEST_F(UpdateValues, AreConvertedToTheColumnsType) {
  use("corner", u"tblStock", u"id", std::int32_t{7});
  EXPECT_EQ(changed(u"price", 2.00005), "2.0000");
  EXPECT_EQ(changed(u"price", u"0.00015"), "0.0002");
  EXPECT_EQ(changed(u"price", u" -12.34565 "), "-12.3456");
  EXPECT_EQ(changed(u"price", u"922337203685477.5807"), "922337203685477.5807");
  EXPECT_EQ(changed(u"deptid", u"2.5"), "2");
  EXPECT_EQ(changed(u"deptid", 3.5), "4");
  EXPECT_EQ(changed(u"onhand", runtime::Currency{-25000}), "-2");
  EXPECT_EQ(changed(u"taxable", u"no"), "0");
  EXPECT_EQ(changed(u"taxable", std::int16_t{5}), "1");
  EXPECT_EQ(changed(u"taxable", runtime::Null{}), "0");
  EXPECT_EQ(changed(u"description", std::int32_t{1234}), "1234");
  EXPECT_EQ(changed(u"description", u""), "");
  EXPECT_EQ(changed(u"lastsold", u"1899-12-29 06:00:00"), "1899-12-29 06:00:00");
  EXPECT_EQ(changed(u"rowguid", u"{0123ABCD-4567-89ef-0123-456789abcdef}"),
            "{0123ABCD-4567-89EF-0123-456789ABCDEF}");
  EXPECT_EQ(changed(u"deptid", runtime::Null{}), "\\N");
  EXPECT_EQ(verdict(), "sound");
}

TEST_F(UpdateValues, AFullPageOfLongValuesIsRemovedFromTheMapOfPagesWithRoom) {
  makestore::StoreBuilder store;
  store.table(u"Notes")
      .column({.name = u"id"})
      .column({.name = u"note", .type = jet::ColumnType::Memo, .compressed = false})
      .row({std::int32_t{1}, std::u16string(1000, u'a')})
      .row({std::int32_t{2}});
  const fs::path file = scratch_.folder() / "notes.mdb";
  store.write(file);
  useFile(file, u"", u"Notes", u"id", std::int32_t{2});
  const auto pagesWithRoom = [&] {
    jet::Database database(file_, u"the file", jet::Password{password_});
    const jet::TableSource& source = tableNamed(database, table_).source();
    return jet::pagesWithRoom(source.pager, source.definition.longValueMaps.at(0).free, {});
  };
  const std::vector<jet::PageNumber> before = pagesWithRoom();
  EXPECT_EQ(before.size(), 1U);
  change(u"note", std::u16string(1030, u'b'));  // leaves 20 bytes of the page free
  EXPECT_EQ(pagesWithRoom(), std::vector<jet::PageNumber>());
  change(u"note", runtime::Null{});
  EXPECT_EQ(pagesWithRoom(), before);
  EXPECT_EQ(verdict(), "sound");
}

TEST_F(UpdateValues, ValuesThatDoNotFitTheColumnAreRefused) {
  use("corner", u"tblStock", u"id", std::int32_t{7});
  EXPECT_EQ(refused(u"deptid", u"three"), kMismatch);
  EXPECT_EQ(refused(u"deptid", u""), kMismatch);
  EXPECT_EQ(refused(u"price", runtime::Binary{1}), kMismatch);
  EXPECT_EQ(refused(u"lastsold", u"2004-02-30"), kMismatch);
  EXPECT_EQ(refused(u"rowguid", u"{0123}"), kMismatch);
  EXPECT_EQ(refused(u"onhand", std::int32_t{40000}), kTooLarge);
  EXPECT_EQ(refused(u"deptid", 1e300), kTooLarge);
  EXPECT_EQ(refused(u"price", u"922337203685477.5808"), kTooLarge);
  EXPECT_EQ(refused(u"description", std::u16string(51, u'x')), kTooLarge);
  EXPECT_EQ(refused(u"recno", std::int32_t{5}), kEngine);
  EXPECT_EQ(refused(u"id", runtime::Null{}), kEngine);
  EXPECT_EQ(refused(u"id", std::int32_t{8}), kEngine);
  // A character outside the sort order can't be indexed; in other columns it is an ordinary text.
  EXPECT_EQ(refused(u"description", u"\u6f22"), kEngine);
  EXPECT_EQ(changed(u"notes", u"\u6f22"), "\u6f22");
  use("short", u"tblStock", u"id", std::int32_t{7});
  EXPECT_EQ(refused(u"description", u""), kEngine);
  EXPECT_EQ(changed(u"description", runtime::Null{}), "\\N");
}

/// Adds a foreign key of one index to a table's definition, which takes one page.
void addForeignKey(std::vector<std::uint8_t>& bytes, jet::PageNumber page, jet::LogicalIndex key) {
  const std::size_t size = jet::kJet4Layout.pageSize;
  const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(page.value() * size);
  jet::TableDefinition definition = jet::TableDefinition::decode(
      jet::Version::Jet4, jet::Bytes(at, at + static_cast<std::ptrdiff_t>(size)), {});
  key.kind = jet::LogicalIndex::Kind::ForeignKey;
  key.number = jet::LogicalIndexNumber(definition.logicalIndexes.size());
  definition.logicalIndexes.push_back(std::move(key));
  std::ranges::copy(definition.encodePages(std::vector{page}).at(0), at);
}

TEST_F(UpdateValues, ValuesThatWouldBreakARelationshipAreRefused) {
  makestore::StoreBuilder store;
  using makestore::Index;
  store.table(u"Groups").column({.name = u"id"}).index(Index::primaryKey(u"id"));
  store.tableNamed(u"Groups").row({std::int32_t{1}}).row({std::int32_t{2}});
  store.table(u"Items").column({.name = u"id"}).column({.name = u"groupId"});
  store.tableNamed(u"Items").index(Index::primaryKey(u"id")).index(Index::plain(u"groupId"));
  store.tableNamed(u"Items").row({std::int32_t{5}, std::int32_t{1}});
  std::vector<std::uint8_t> bytes = store.build();
  const fs::path file = scratch_.folder() / "related.mdb";
  // The definitions of generated tables begin on page 6, in the order of creation.
  constexpr jet::PageNumber kGroups(6);
  constexpr jet::PageNumber kItems(7);
  addForeignKey(bytes, kGroups,
                {.name = u"ItemsOfGroup",
                 .index = jet::IndexNumber(0),
                 .side = jet::LogicalIndex::kReferenced,
                 .otherIndex = jet::LogicalIndexNumber(2),
                 .otherTable = kItems});
  addForeignKey(bytes, kItems,
                {.name = u"ItemsOfGroup",
                 .index = jet::IndexNumber(1),
                 .side = jet::LogicalIndex::kReferencing,
                 .otherIndex = jet::LogicalIndexNumber(1),
                 .otherTable = kGroups});
  support::writeFile(file, bytes);
  EXPECT_EQ(checkerVerdict(file), "sound");
  useFile(file, u"", u"Items", u"id", std::int32_t{5});
  EXPECT_EQ(refused(u"groupId", std::int32_t{777}), kEngine);
  EXPECT_EQ(changed(u"groupId", std::int32_t{2}), "2");
  useFile(file, u"", u"Groups", u"id", std::int32_t{2});
  EXPECT_EQ(refused(u"id", std::int32_t{3}), kEngine);
  useFile(file, u"", u"Items", u"id", std::int32_t{5});
  EXPECT_EQ(changed(u"groupId", runtime::Null{}), "\\N");
  useFile(file, u"", u"Groups", u"id", std::int32_t{2});
  EXPECT_EQ(changed(u"id", std::int32_t{3}), "3");
}

using UpdateOfARow = RowTest;

TEST_F(UpdateOfARow, ARowChangedSinceItWasReadIsRefused) {
  use("corner", u"tblStock", u"id", std::int32_t{17});
  jet::Database database(file_, u"the file", jet::Password{password_});
  const jet::ColumnIndex name = tableNamed(database, table_).columnNamed(u"description").value();
  const auto fill = [&](jet::RowId row, const char16_t* text) {
    return errorNumberOf([&] {
      update(database, tableNamed(database, table_), row,
             std::vector<jet::ColumnValue>{{name, text}},
             std::vector<jet::ColumnValue>{{name, runtime::Null{}}});
    });
  };
  EXPECT_EQ(fill(row_, u"first"), 0);
  EXPECT_EQ(fill(row_, u"second"), kRowChanged);
  EXPECT_EQ(fill({row_.page, jet::SlotNumber(200)}, u"third"), kRowChanged);
  EXPECT_EQ(read(u"description"), "first");
}

TEST_F(UpdateOfARow, WaitsForOtherSessionsUntilATimeout) {
  use("corner", u"tblStock", u"id", std::int32_t{17});
  jet::Database reading(file_, u"the file", jet::Password{password_});
  EXPECT_EQ(refused(u"description", u"never"), kEngine);
  EXPECT_EQ(linesOf(tableNamed(reading, u"tblPlu")).size(), 300U);
}

/// Makes the change in a process of its own that may not make the file longer than `limit`. Returns
/// 0 where it succeeds, 1 for the engine's error, 2 for any other.
int changeWithin(const fs::path& file, rlim_t limit, const Change& change) {
  return support::statusOfCopy([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limits{limit, limit};
    ::setrlimit(RLIMIT_FSIZE, &limits);
    const int number = errorNumberOf([&] { makeChange(file, kStorePassword, change); });
    return number == kEngine ? 1 : number == 0 ? 0 : 2;
  });
}

TEST_F(UpdateOfARow, AFullDiskLeavesAllOldRows) {
  use("tight", u"tblStock", u"id", std::int32_t{3});
  Change change{table_, row_, {}};
  std::vector<std::string> before;
  {
    jet::Database database(file_, u"the file", jet::Password{password_});
    const jet::Table& table = tableNamed(database, table_);
    before = linesOf(table);
    change.values = {{table.columnNamed(u"description").value(), u"Something new"},
                     {table.columnNamed(u"notes").value(), std::u16string(200, u'n')}};
  }
  const auto size = static_cast<rlim_t>(fs::file_size(file_));
  for (const rlim_t more : {0U, 1000U, 4096U}) {
    ASSERT_EQ(changeWithin(file_, size + more, change), 1) << more;
    jet::Database database(file_, u"the file", jet::Password{password_});
    EXPECT_EQ(linesOf(tableNamed(database, table_)), before);
    EXPECT_EQ(verdict(), "sound");
  }
  ASSERT_EQ(changeWithin(file_, RLIM_INFINITY, change), 0);
  EXPECT_EQ(read(u"description"), "Something new");
  EXPECT_EQ(verdict(), "sound");
}

TEST(RandomUpdates, KeepFilesOfAllKindsSound) {
  for (const StoreFile& file : filesOfAllKinds()) {
    SCOPED_TRACE(file.path.string());
    const Scratch scratch;
    RandomUpdates updates(scratch.copy(file.path), file.password, 42);
    for (int round = 0; round < 2; ++round) {
      updates.run(100);
      EXPECT_EQ(updates.problems(), std::vector<std::string>());
    }
  }
}

}  // namespace
