#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "SmallStore.h"
#include "makestore/ShopStore.h"

namespace jetsqltest {
namespace {

/// An ordinary shop's store: ids, names and departments indexed.
SmallStore& shop() {
  static SmallStore store([] {
    makestore::ShopOptions options;
    options.password = u"";
    options.shuffled = true;
    return makestore::shopStore(options);
  }());
  return store;
}

TEST(IndexPlan, ShowsWhichRestrictionUsesWhichIndex) {
  const std::vector<std::pair<const char16_t*, const char*>> cases{
      {u"select id, description from tblStock Where id >=1 and id <=63 order by ID",
       "tblStock by PrimaryKey id> id<"},
      {u"select id, description, price, deptid from tblStock where Description is null order by ID",
       "tblStock by description description0"},
      {u"SELECT id,PRINTER1 from tblPlu where ID = 7", "tblPlu by PrimaryKey id="},
      {u"select id, description from tblDepartment where description = 'Dairy'",
       "tblDepartment by description description="},
      {u"select id, description from tblDepartment order by description", "tblDepartment by scan"},
      {u"select id from tblStock where deptid > 3 and deptid < 5",
       "tblStock by deptid deptid> deptid<"},
      {u"select id from tblStock where id in (1, 2)", "tblStock by PrimaryKey id="},
      {u"select id from tblStock where id between 9 and 3", "tblStock by PrimaryKey id> id<"},
      {u"select id from tblStock where price = 2", "tblStock by lookup price="},
      {u"select id from tblStock where price > 2", "tblStock by scan"},
      {u"select s.id, d.description from tblStock s left join tblDepartment d on s.deptid = d.id "
       u"where s.id = 3",
       "tblStock by PrimaryKey id=; tblDepartment by PrimaryKey id="},
      // At most one department joins and none of its columns is used, so the join is left out.
      {u"select s.id from tblStock s left join tblDepartment d on s.deptid = d.id",
       "tblStock by scan"}};
  for (const auto& [statement, plan] : cases) {
    EXPECT_EQ(shop().plan(statement), plan) << narrow(statement);
  }
}

TEST(IndexPlan, ReadsTheSameRowsAsAScan) {
  // A condition on a column with "+0" or "& ''" can't use an index.
  const std::vector<std::pair<const char16_t*, const char16_t*>> cases{
      {u"id >= 100 and id < 120", u"id+0 >= 100 and id+0 < 120"},
      {u"id > 99.5 and id <= 110.2", u"id+0 > 99.5 and id+0 <= 110.2"},
      {u"id = 100.5", u"id+0 = 100.5"},
      {u"id > 5000000000 or id < -5000000000 or id = 1e300", u"id+0 > 5000000000"},
      {u"id < 3000000000 and id > 400", u"id+0 > 400"},
      {u"description is null", u"Len(description) is null"},
      {u"description >= 'm' and description < 'P'",
       u"description & '' >= 'm' and description & '' < 'P'"},
      {u"description > ''", u"description & '' > ''"},
      {u"deptid in (1, 3, 99)", u"deptid+0 in (1, 3, 99)"},
      {u"deptid = 2 and description < 'm'", u"deptid+0 = 2 and description & '' < 'm'"}};
  for (const auto& [indexed, scanned] : cases) {
    const std::u16string select = u"select id, description, deptid from tblStock where ";
    // For null, `description & ''` is an empty text; the guard leaves these rows out again.
    const std::u16string guard = std::u16string(scanned).find(u"& ''") == std::u16string::npos
                                     ? u""
                                     : u" and Len(description) >= 0";
    EXPECT_EQ(shop().sortedRows(select + indexed), shop().sortedRows(select + scanned + guard))
        << narrow(indexed);
  }
}

TEST(IndexPlan, BoundsOfADescendingIndexLeaveOutNulls) {
  makestore::StoreBuilder builder;
  makestore::StoreTable& table = builder.table(u"T");
  table.column({.name = u"id"}).column({.name = u"n"});
  table.index({.name = u"down", .columns = {{u"n", false}}});
  for (std::int32_t id = 0; id < 200; ++id)
    table.row({id, id % 7 == 0 ? runtime::Variant() : runtime::Variant(id)});
  SmallStore store(std::move(builder));
  EXPECT_EQ(store.plan(u"select id from T where n > 9"), "T by down n>");
  EXPECT_EQ(store.sortedRows(u"select id from T where n > 8 and n <= 11"),
            (std::vector<std::string>{"10", "11", "9"}));
  EXPECT_EQ(store.rows(u"select id from T where n < 3").size(), 2U);
}

TEST(IndexPlan, ALookupWithoutAnIndexFindsTheSameRowsAsAScan) {
  const auto joined = shop().sortedRows(
      u"select a.id, b.id from tblStock a inner join tblStock b on a.price = b.price");
  const auto computed = shop().sortedRows(
      u"select a.id, b.id from tblStock a, tblStock b where a.price+0 = b.price+0");
  EXPECT_FALSE(joined.empty());
  EXPECT_EQ(joined, computed);
}

TEST(IndexPlan, CalculatesValuesOfAJoinsRightSideOnce) {
  const std::u16string select = u"select a.id, b.id from tblStock a ";
  const auto expected = shop().sortedRows(select + u"left join tblStock b on a.id = b.id");
  const std::u16string calculated = u"(select id, Val(id & '') as number, id & '' as text from ";
  for (const std::u16string& join : std::vector<std::u16string>{
           u"left join tblStock b on a.id & '' = b.id & ''",
           u"left join tblStock b on Val(b.id & '') = a.id",
           u"inner join tblStock b on a.id * 2 = b.id + b.id",
           u"right join tblStock b on CLng(a.id & '') = b.id",
           u"left join " + calculated + u"tblStock) b on a.id = b.number",
           u"inner join " + calculated + u"tblStock) b on a.id & '' = b.text"}) {
    EXPECT_EQ(shop().sortedRows(select + join), expected) << narrow(join);
    // SQLite keeps the calculated values in an automatic index.
    const std::string plan = shop().plan(select + join);
    EXPECT_NE(plan.find("AUTOMATIC"), std::string::npos) << narrow(join) << "\n" << plan;
  }
}

}  // namespace
}  // namespace jetsqltest
