#include <gtest/gtest.h>

#include <fstream>

#include "TestStore.h"
#include "makestore/StoreBuilder.h"
#include "platform/files/ProgramFolder.h"
#include "support/FileFaults.h"

namespace adodbtest {
namespace {

namespace fs = std::filesystem;

using ADODB::Connection;
using ADODB::Recordset;
using runtime::Variant;

constexpr std::u16string_view kFreeSlots =
    u"select id, description, price, deptid from tblStock where Description is null order by ID";

class Update : public testing::Test {
 protected:
  explicit Update(const makestore::ShopOptions& options = smallShop()) : store_(options) {
    store_.open(connection_);
  }

  /// The first row of a statement, read in a session of its own, as texts joined by "|".
  std::string reread(std::u16string_view statement) const {
    Connection connection;
    store_.open(connection);
    Recordset rows;
    rows.Open(statement, connection, 1, 2, -1);
    std::string line;
    for (int i = 0; i < rows.FieldCount(); ++i) {
      line += narrow(rows.FieldAt(i).value() & u"|");
    }
    return line;
  }

  TestStore store_;
  Connection connection_;
  Recordset rows_;
};

TEST_F(Update, FillsTheFirstFreeSlotAndStaysOnIt) {
  rows_.Open(kFreeSlots, connection_, 1, 2, -1);
  EXPECT_EQ(rows_.RecordCount(), 10);
  rows_.Fields(u"description").value(u"O'Hara's \u20AC");
  rows_.Fields(u"price").value(2.5);
  rows_.Fields(u"deptid").value(u"3");
  EXPECT_EQ(rows_.Fields(u"price").value(), Variant(2.5));
  rows_.Update();
  EXPECT_EQ(rows_.Fields(u"id").value(), Variant(std::int32_t{31}));
  EXPECT_EQ(rows_.Fields(u"description").value(), Variant(u"O'Hara's \u20AC"));
  EXPECT_EQ(rows_.Fields(u"price").value(), Variant(runtime::Currency{25000}));
  EXPECT_EQ(rows_.Fields(u"deptid").value(), Variant(std::int32_t{3}));
  EXPECT_EQ(rows_.RecordCount(), 10);
  rows_.Close();

  EXPECT_EQ(
      reread(u"select id, price, deptid from tblStock where description = 'o''hara''s \u20AC'"),
      "31|2.5|3|");
  EXPECT_EQ(reread(kFreeSlots), "32||0|0|");
}

TEST_F(Update, UpdateAndMoveNextWriteAllTablesOfAJoin) {
  rows_.Open(
      u"select s.id, s.description, p.PRINTER1, p.ITEM_TYPE from tblStock s inner join tblPlu p on "
      u"s.id = p.id where s.id < 3 order by s.id",
      connection_, 1, 2, -1);
  rows_.Fields(u"PRINTER1").value(std::int16_t{1});
  rows_.Fields(u"description").value(u"Both");
  rows_.MoveNext();
  rows_.Fields(u"ITEM_TYPE").value(u"1");
  rows_.Update();
  rows_.Update();
  rows_.Close();
  EXPECT_EQ(
      reread(u"select s.description, p.PRINTER1 from tblStock s inner join tblPlu p on s.id = "
             u"p.id where s.id = 1"),
      "Both|1|");
  EXPECT_EQ(reread(u"select ITEM_TYPE from tblPlu where id = 2"), "1|");
}

TEST_F(Update, AnUpdateThroughASavedQueryWritesTheTable) {
  rows_.Open(u"select ID, DESCRIPTION, barcode, deptname from qrySalesitems where ID = 7",
             connection_, 1, 2, -1);
  rows_.Fields(u"barcode").value(u"471");
  rows_.Fields(u"description").value(u"Renamed");
  rows_.Update();
  EXPECT_EQ(rows_.Fields(u"barcode").value(), Variant(u"471"));
  rows_.Close();
  EXPECT_EQ(reread(u"select barcode from tblPlu where id = 7"), "471|");
  EXPECT_EQ(reread(u"select description from tblStock where id = 7"), "Renamed|");
}

TEST_F(Update, RefusedValuesLeaveTheRowAsItWas) {
  rows_.Open(u"select id, description, price, deptid from tblStock where id = 3", connection_, 1, 2,
             -1);
  const std::string before = reread(u"select * from tblStock where id = 3");
  rows_.Fields(u"description").value(u"changed");
  rows_.Fields(u"deptid").value(u"three");
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147217913);
  EXPECT_EQ(reread(u"select * from tblStock where id = 3"), before);
  rows_.Fields(u"deptid").value(u"2");
  rows_.Fields(u"description").value(std::u16string(51, u'x'));
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147217833);
  rows_.Fields(u"description").value(u"fits");
  rows_.Fields(u"id").value(std::int32_t{4});
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147467259);
  EXPECT_EQ(reread(u"select * from tblStock where id = 3"), before);
  rows_.Fields(u"id").value(std::int32_t{3});
  rows_.Update();
  EXPECT_EQ(reread(u"select id, description, deptid from tblStock where id = 3"), "3|fits|2|");
}

TEST_F(Update, ARowThatAnotherSessionChangedIsRefused) {
  rows_.Open(kFreeSlots, connection_, 1, 2, -1);
  rows_.Fields(u"description").value(u"second");
  {
    Connection other;
    store_.open(other);
    Recordset first;
    first.Open(kFreeSlots, other, 1, 2, -1);
    first.Fields(u"description").value(u"first");
    first.Update();
  }
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147217864);
  connection_.Close();
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), 3704);

  Connection reading;
  store_.open(reading);
  Recordset stale;
  stale.Open(kFreeSlots, reading, 1, 2, -1);
  Recordset sameSession;
  sameSession.Open(kFreeSlots, reading, 1, 2, -1);
  sameSession.Fields(u"description").value(u"third");
  sameSession.Update();
  stale.Fields(u"description").value(u"fourth");
  EXPECT_EQ(failureOf([&] { stale.Update(); }),
            "-2147217864: Row cannot be located for updating. Some values may have been changed "
            "since it was last read.");
  reading.Close();
  EXPECT_EQ(reread(u"select description from tblStock where id = 31"), "first|");
  EXPECT_EQ(reread(u"select description from tblStock where id = 32"), "third|");
}

/// A store of items with these columns.
fs::path writeItems(const fs::path& file, const std::vector<makestore::Column>& columns) {
  makestore::StoreBuilder store;
  makestore::StoreTable& table = store.password(std::u16string(kStorePassword)).table(u"Items");
  std::vector<runtime::Variant> row{std::int32_t{1}, u"tea"};
  for (const makestore::Column& column : columns) table.column(column);
  table.row(std::move(row));
  store.write(file);
  return file;
}

TEST_F(Update, ATableDefinitionChangedByAnotherProgramIsRefused) {
  using makestore::Column;
  const Column id{.name = u"id"};
  const Column name = Column::text(u"name", 20);
  const Column note = Column::text(u"note", 20);
  const Column amount{.name = u"amount", .type = jet::ColumnType::Double};
  struct Case {
    const char* what;
    std::vector<Column> columns;
    bool accepted;
  };
  for (const Case& each : {
           Case{"dropped", {id, name}, false},
           Case{"another column number", {id, name, amount, note}, false},
           Case{"another name", {id, name, Column::text(u"notes", 20)}, false},
           Case{"another type", {id, name, {.name = u"note"}}, false},
           Case{"an added column", {id, name, note, amount}, true},
       }) {
    SCOPED_TRACE(each.what);
    const fs::path file = writeItems(store_.folder().path() / "Items.mdb", {id, name, note});
    Connection connection;
    connection.Open(connectionString(files::programFolder() + u"\\Items.mdb"), u"", u"", -1);
    Recordset rows;
    rows.Open(u"select id, name, note from Items", connection, 1, 2, -1);
    // Another program overwrites the file.
    const auto changed =
        support::readFile(writeItems(store_.folder().path() / "other.mdb", each.columns));
    std::ofstream(file, std::ios::binary) << changed.value();
    rows.Fields(u"note").value(u"green");
    EXPECT_EQ(errorNumberOf([&] { rows.Update(); }), each.accepted ? 0 : -2147217864);
    EXPECT_EQ(support::readFile(file) == changed, !each.accepted);
    EXPECT_EQ(rows.Fields(u"note").value(), Variant(u"green"));
  }
}

TEST_F(Update, AReplacedFileIsRefused) {
  rows_.Open(kFreeSlots, connection_, 1, 2, -1);
  const fs::path restored = store_.folder().path() / "restored.mdb";
  fs::copy_file(store_.file(), restored);
  const auto bytes = support::readFile(restored);
  fs::rename(store_.file(), store_.folder().path() / "old.mdb");
  fs::rename(restored, store_.file());
  rows_.Fields(u"description").value(u"lost");
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147467259);
  EXPECT_EQ(support::readFile(store_.file()), bytes);
  EXPECT_EQ(support::readFile(store_.folder().path() / "old.mdb"), bytes);
}

TEST_F(Update, AnUpdateWithoutChangesReadsFewPages) {
  makestore::ShopOptions options;
  options.slots = 5000;
  options.products = 4000;
  const TestStore large(options);
  Connection connection;
  large.open(connection);
  rows_.Open(u"SELECT id,PRINTER1, PRINTER2, OPEN_PLU,ITEM_TYPE,NEG_PRICE from tblPlu where ID = 7",
             connection, 1, 2, -1);
  for (const char16_t* column : {u"PRINTER1", u"PRINTER2", u"OPEN_PLU", u"ITEM_TYPE", u"NEG_PRICE"})
    rows_.Fields(column).value(rows_.Fields(column).value());
  const support::FileFaults resetsSeam;
  int reads = 0;
  int changes = 0;
  files::setFaultSeam([&](const files::FileStep& step) {
    ++(step.kind == files::FileStep::Kind::Read ? reads : changes);
    return step.size;
  });
  rows_.Update();
  EXPECT_LE(reads, 20);
  EXPECT_EQ(changes, 0);
}

// A program can keep its session open while it shows a message; other programs must still be able
// to write.
TEST_F(Update, AnOpenSessionLetsOthersWriteAndReadsTheirValues) {
  Connection other;
  store_.open(other);
  const auto rename = [&](std::u16string_view name) {
    Recordset rows;
    rows.Open(u"select id, description from tblStock where id = 4", other, 1, 2, -1);
    rows.Fields(u"description").value(std::u16string(name));
    rows.Update();
    rows.Close();
  };
  const auto seen = [&] {
    rows_.Open(u"select description from tblStock where id = 4", connection_, 1, 2, -1);
    const std::string name = narrow(rows_.Fields(u"description").value() & u"");
    rows_.Close();
    return name;
  };
  seen();
  rename(u"once");
  EXPECT_EQ(seen(), "once");
  EXPECT_EQ(errorNumberOf([&] { rows_.Open(u"select 'a", connection_, 1, 2, -1); }), -2147217900);
  rename(u"twice");
  rows_.Open(u"select id from tblStock where id = 4", connection_, 1, 2, -1);
  rows_.Fields(u"id").value(std::int32_t{5});
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), -2147467259);
  rename(u"three times");
  rows_.Fields(u"id").value(std::int32_t{4});
  rows_.Update();
  rename(u"four times");
  rows_.Close();
  EXPECT_EQ(seen(), "four times");
}

}  // namespace
}  // namespace adodbtest
