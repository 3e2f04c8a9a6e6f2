#include <gtest/gtest.h>

#include "TestStore.h"

namespace adodbtest {
namespace {

using ADODB::Connection;
using ADODB::Recordset;
using runtime::Variant;

class RecordsetTest : public testing::Test {
 protected:
  void SetUp() override { store_.open(connection_); }
  void open(std::u16string_view statement, int lockType = 2) {
    rows_.Open(statement, connection_, 1, lockType, -1);
  }

  TestStore store_{smallShop()};
  Connection connection_;
  Recordset rows_;
};

TEST_F(RecordsetTest, MoveNextVisitsEachRowOnce) {
  open(u"select id, Description from tblStock Where id >=29 and id <=31 order by ID");
  EXPECT_EQ(rows_.RecordCount(), 3);
  EXPECT_EQ(rows_.FieldCount(), 2);
  EXPECT_EQ(rows_.FieldName(1), u"description");
  std::u16string seen;
  for (; !rows_.Eof(); rows_.MoveNext()) {
    seen += rows_.Fields(u"ID").value() & u"=";
    seen += rows_.Fields(u"DESCRIPTION").value() & u";";
  }
  EXPECT_EQ(narrow(seen), "29=Item 29;30=Item 30;31=;");
  EXPECT_EQ(rows_.RecordCount(), 3);
  EXPECT_EQ(failureOf([&] { rows_.MoveNext(); }),
            "3021: Either BOF or EOF is True, or the current record has been deleted. Requested "
            "operation requires a current record.");
  rows_.Close();
}

TEST_F(RecordsetTest, AnEmptyResultHasFieldsButNoValues) {
  open(u"select id, description from tblStock where id = 4711");
  EXPECT_EQ(rows_.RecordCount(), 0);
  EXPECT_TRUE(rows_.Eof());
  EXPECT_EQ(errorNumberOf([&] { (void)rows_.Fields(u"id").value(); }), 3021);
  EXPECT_EQ(errorNumberOf([&] { rows_.Fields(u"description").value(u"x"); }), 3021);
  EXPECT_EQ(errorNumberOf([&] { rows_.Update(); }), 3021);
  EXPECT_EQ(errorNumberOf([&] { (void)rows_.Fields(u"price"); }), 3265);
  EXPECT_EQ(errorNumberOf([&] { (void)rows_.FieldAt(2); }), 3265);
}

TEST_F(RecordsetTest, RefusesCallsThatDoNotFitItsState) {
  EXPECT_EQ(rows_.State(), ADODB::kStateClosed);
  EXPECT_EQ(errorNumberOf([&] { (void)rows_.RecordCount(); }), 3704);
  EXPECT_EQ(errorNumberOf([&] { rows_.Close(); }), 3704);
  EXPECT_EQ(errorNumberOf([&] { open(u"select nonsense from tblStock"); }), -2147217904);
  EXPECT_EQ(rows_.State(), ADODB::kStateClosed);
  open(u"select id from tblStock");
  EXPECT_EQ(errorNumberOf([&] { open(u"select id from tblStock"); }), 3705);
  rows_.Close();
  open(u"select id from tblPlu");
  EXPECT_EQ(rows_.RecordCount(), 40);
}

TEST_F(RecordsetTest, OnlyColumnsThatComeFromATableRowCanBeSet) {
  open(u"select id, description & '' as x, price from tblStock where id = 3");
  EXPECT_EQ(errorNumberOf([&] { rows_.Fields(u"x").value(u"y"); }), 3251);
  rows_.Fields(u"price").value(2.5);
  EXPECT_EQ(rows_.Fields(u"price").value(), Variant(2.5));
  EXPECT_EQ(errorNumberOf([&] { rows_.Close(); }), 3219);

  Recordset grouped;
  grouped.Open(u"select deptid, count(*) as n from tblStock group by deptid", connection_, 1, 2,
               -1);
  EXPECT_EQ(errorNumberOf([&] { grouped.Fields(u"deptid").value(1); }), 3251);
  Recordset readOnly;
  readOnly.Open(u"select id, price from tblStock", connection_, 1, 1, -1);
  EXPECT_EQ(errorNumberOf([&] { readOnly.Fields(u"price").value(1); }), 3251);
  Recordset outer;
  outer.Open(u"select s.id, p.PRINTER1 from tblStock s left join tblPlu p on s.id = p.id+100",
             connection_, 1, 2, -1);
  EXPECT_EQ(errorNumberOf([&] { outer.Fields(u"PRINTER1").value(1); }), 3251);
}

TEST_F(RecordsetTest, OnlyCompleteDatesOfTheCalendarAreWritten) {
  open(u"select id, lastsold from tblStock where id = 3");
  const auto written = [&](std::u16string_view text) {
    rows_.Fields(u"lastsold").value(std::u16string(text));
    rows_.Update();
    return narrow(rows_.Fields(u"lastsold").value().toText());
  };
  for (const char16_t* text :
       {u"0100-01-01 00:00:00", u"1899-12-30 12:00:00", u"1899-12-29 18:00:01",
        u"2004-02-29 10:15:00", u"9999-12-31 23:59:59"})
    EXPECT_EQ(written(text), narrow(text));
  EXPECT_EQ(written(u"38000.25"), "2004-01-14 06:00:00");
  for (const char16_t* text : {u"0099-12-31", u"2003-02-29", u"2004-01-01 24:00", u"2004-01-01 9",
                               u"2004-01-01x", u"2004-01-01 10:15:00 and on", u"soon"})
    EXPECT_EQ(errorNumberOf([&] { written(text); }), -2147217913) << narrow(text);
}

}  // namespace
}  // namespace adodbtest
