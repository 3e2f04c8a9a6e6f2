#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SmallStore.h"

namespace jetsqltest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Select : public testing::Test {
 protected:
  using Lines = std::vector<std::string>;
  static Lines rows(std::u16string_view statement) { return littleShop().rows(statement); }
  static Lines sorted(std::u16string_view statement) { return littleShop().sortedRows(statement); }
};

TEST_F(Select, ColumnsComeWithTheirTypesAndTheFilesSpelling) {
  EXPECT_THAT(rows(u"select * from items where ID = 5"),
              ElementsAre("5 | 'tea' | $2.5 | 4i | 'D1' | yes | @2004-03-31 10:15:00 | 0.5"));
  EXPECT_EQ(littleShop().columns(u"select ID, NAME as Label, [Items].[qty], price*2, 1 from items"),
            "id,Label,qty,Expr1003,Expr1004");
  EXPECT_THAT(rows(u"SELECT price*2, price*1.5, qty+price, -active, sold+1, qty & '' "
                   u"FROM Items WHERE id=2;"),
              ElementsAre("$6.5 | 4.875 | $13.25 | 1i | @2004-01-15 00:00:00 | '10'"));
}

TEST_F(Select, WhereKeepsRowsForWhichItIsTrue) {
  EXPECT_THAT(sorted(u"select id from Items where name <> \"\""),
              ElementsAre("1", "2", "4", "5", "7", "8"));
  EXPECT_THAT(sorted(u"select id from Items where name = 'TEA'"), ElementsAre("5", "7"));
  EXPECT_THAT(sorted(u"select id from Items where name Is Null"), ElementsAre("9"));
  EXPECT_THAT(rows(u"select id from Items where name = Null"), IsEmpty());
  EXPECT_THAT(sorted(u"select id from Items where not name = 'tea'"),
              ElementsAre("1", "2", "3", "4", "8"));
  EXPECT_THAT(sorted(u"select id from Items where active"), ElementsAre("2", "3", "5", "7"));
  EXPECT_THAT(sorted(u"select id from Items where active=False"), ElementsAre("1", "4", "8", "9"));
  EXPECT_THAT(sorted(u"select id from Items where qty"), ElementsAre("1", "2", "4", "5", "7", "8"));
  EXPECT_THAT(sorted(u"select id from Items where price=2.75 or price between 4 and 1.15"),
              ElementsAre("1", "2", "4", "5", "7"));
  EXPECT_THAT(rows(u"select id from Items where sold = #3/31/2004 10:15#"), ElementsAre("5"));
  EXPECT_THAT(sorted(u"select id from Items where name like 't*' and id in (5, 7, 99)"),
              ElementsAre("5", "7"));
}

TEST_F(Select, OrdersByKeysNullFirst) {
  EXPECT_THAT(rows(u"select id from Items order by name, id"),
              ElementsAre("9", "3", "2", "4", "8", "1", "5", "7"));
  EXPECT_THAT(rows(u"select id from Items order by name desc, id"),
              ElementsAre("5", "7", "1", "8", "4", "2", "3", "9"));
  EXPECT_THAT(rows(u"select id from Items order by qty, ratio desc, id"),
              ElementsAre("3", "9", "1", "7", "5", "8", "4", "2"));
  EXPECT_THAT(rows(u"select id, name & '!' as x from Items where id<4 order by x"),
              ElementsAre("3 | '!'", "2 | 'Coffee!'", "1 | 'Cr\u00E8me!'"));
  EXPECT_THAT(rows(u"select id, -id from Items where id<4 order by 2"),
              ElementsAre("3 | -3", "2 | -2", "1 | -1"));
  EXPECT_THAT(rows(u"select id from Items where id<4 order by IIf(id=2,0,id) desc"),
              ElementsAre("3", "1", "2"));
}

/// Calculated texts are compared like those of columns.
TEST_F(Select, CalculatedTextsCompareWithoutCase) {
  EXPECT_THAT(rows(u"select count(*) from (select distinct name & '' as n from Items where qty=4)"),
              ElementsAre("1"));
  EXPECT_THAT(rows(u"select count(*), max(dept & '') from Items where qty > 3 and dept is not null "
                   u"group by dept & '' order by 1"),
              ElementsAre("1 | 'D2'", "1 | 'D9'", "2 | 'D1'"));
  EXPECT_THAT(sorted(u"select i.id from Items i inner join (select title & '' as t, id & '' as k "
                     u"from Depts) d on LCase(i.dept) = d.k where IIf(True, d.t, 1) = 'DRINKS'"),
              ElementsAre("2", "5"));
  EXPECT_THAT(sorted(u"select id from Items where name & '' in (select UCase(name) from Items "
                     u"where id = 5) or UCase(name) = 'coFFee'"),
              ElementsAre("2", "5", "7"));
}

TEST_F(Select, GroupsByTextWithoutCaseAndAggregatesWithoutNull) {
  EXPECT_THAT(rows(u"select dept, count(*), count(price), sum(qty), min(name), max(name) "
                   u"from Items group by dept order by dept"),
              ElementsAre("null | 2 | 1 | 7.0 | 'coop milk' | 'coop milk'",
                          "'D1' | 2 | 2 | 14.0 | 'Coffee' | 'tea'",
                          "'D2' | 3 | 3 | 8.0 | '' | 'Cr\u00E8me'",
                          "'D9' | 1 | 1 | 4.0 | 'Tea ' | 'Tea '"));
  EXPECT_THAT(rows(u"select count(*), sum(price), avg(price), min(price), max(sold) from Items"),
              ElementsAre("8 | $14.8 | $2.1143 | $0 | @2004-03-31 10:15:00"));
  EXPECT_THAT(rows(u"select sum(id), count(*), first(id), max(name) from Empty"),
              ElementsAre("null | 0 | null | null"));
  EXPECT_THAT(rows(u"select dept & '!', sum(qty)*2 from Items group by dept having sum(qty)>7 "
                   u"order by sum(qty) desc"),
              ElementsAre("'D1!' | 28.0", "'D2!' | 16.0"));
  EXPECT_THAT(rows(u"select first(id), last(id) from Items where qty=4"), ElementsAre("5 | 7"));
  EXPECT_THAT(rows(u"select var(id), stdevp(id), var(qty) from Items where id in (1,3)"),
              ElementsAre("2.0 | 1.0 | 0.5"));
  EXPECT_THAT(rows(u"select count(*) from Items having count(*) > 100"), IsEmpty());
  EXPECT_THAT(rows(u"select count(*) from Empty having count(*) < 1"), ElementsAre("0"));
  EXPECT_THAT(rows(u"select 'a' from Empty having count(*) < 1"), ElementsAre("'a'"));
  EXPECT_THAT(rows(u"select count(*) from Items group by -True"), ElementsAre("8"));
  EXPECT_THAT(rows(u"select qty=7, count(*) from Items group by qty=7"),
              ElementsAre("yes | 2", "no | 6"));
}

TEST_F(Select, DistinctComparesByKeyAndTopTakesTies) {
  EXPECT_THAT(sorted(u"select distinct dept from Items where dept like 'd*'"),
              ElementsAre("'D1'", "'D2'", "'D9'"));
  EXPECT_THAT(
      rows(u"select distinct qty, active from Items where qty=4 or qty=7 order by qty desc"),
      ElementsAre("7i | no", "4i | yes"));
  EXPECT_THAT(sorted(u"select top 3 id from Items order by qty desc"), ElementsAre("2", "4", "8"));
  EXPECT_THAT(sorted(u"select top 4 id from Items order by qty desc"),
              ElementsAre("2", "4", "5", "7", "8"));
  EXPECT_THAT(rows(u"select top 25 percent id from Items order by id"), ElementsAre("1", "2"));
  EXPECT_THAT(rows(u"select top 1 percent id from Items order by id"), ElementsAre("1"));
  EXPECT_EQ(rows(u"select top 3 id from Items").size(), 3U);
  EXPECT_THAT(rows(u"select distinct top 2 qty from Items order by qty"), ElementsAre("0i", "1i"));
  EXPECT_THAT(sorted(u"select distinctrow i.id from Items i inner join Codes c on i.id = c.item"),
              ElementsAre("2", "5"));
  EXPECT_EQ(rows(u"select i.id from Items i inner join Codes c on i.id = c.item").size(), 3U);
}

/// Doubles can't distinguish amounts of this size.
TEST_F(Select, AmountsStayExactInAllClauses) {
  constexpr const char* kMost = "$922337203685477.5807";
  constexpr const char* kNext = "$922337203685477.5806";
  EXPECT_THAT(rows(u"select distinct amount from Amounts order by amount desc"),
              ElementsAre(kMost, kNext, "$2.5", "-$2.5"));
  EXPECT_THAT(rows(u"select amount from Amounts union select 1 from Depts order by amount"),
              ElementsAre("-$2.5", "$1", "$2.5", kNext, kMost));
  EXPECT_THAT(rows(u"select min(amount), max(amount), count(*) from Amounts group by "
                   u"IIf(amount > 3, amount, 3) order by max(amount)"),
              ElementsAre("-$2.5 | $2.5 | 4", "$922337203685477.5806 | $922337203685477.5806 | 2",
                          "$922337203685477.5807 | $922337203685477.5807 | 2"));
  EXPECT_THAT(
      rows(u"select top 1 -amount, amount - 1, (select max(amount) from Amounts) from "
           u"Amounts where amount in (select min(amount) from Amounts where amount > 2.5)"),
      ElementsAre("-$922337203685477.5806 | $922337203685476.5806 | $922337203685477.5807"));
  EXPECT_THAT(rows(u"select sum(amount) from Amounts where amount between 3 and 2.5 or amount < 0"),
              ElementsAre("$0"));
  EXPECT_THAT(rows(u"select avg(amount), amount / 2, amount * 2, amount & '', "
                   u"CCur(0.01) * CCur(0.004) * 10 from Amounts where amount = 2.5 or amount = 5 / "
                   u"2 group by amount"),
              ElementsAre("$2.5 | 1.25 | $5 | '2.5' | $0"));
}

/// As doubles the large decimals would be equal.
TEST_F(Select, DecimalsStayExactUnlessCalculatedWith) {
  constexpr const char* kMost = "123456789012345678901234.5678d";
  constexpr const char* kNext = "123456789012345678901234.5677d";
  constexpr const char* kLeast = "-123456789012345678901234.5678d";
  EXPECT_THAT(rows(u"select n from Decimals order by n desc"),
              ElementsAre(kMost, kNext, "1.5000d", kLeast));
  EXPECT_THAT(rows(u"select distinct n from Decimals order by n"),
              ElementsAre(kLeast, "1.5d", kNext, kMost));
  EXPECT_THAT(rows(u"select n from Decimals union select m from Decimals order by n"),
              ElementsAre(kLeast, "-2d", "0d", "1.5d", kNext, kMost));
  EXPECT_THAT(rows(u"select min(n), max(n), first(m), count(*) from Decimals group by n < 0, m "
                   u"order by max(n)"),
              ElementsAre(std::string(kLeast) + " | " + kLeast + " | 1.5d | 1",
                          "1.5d | 1.5d | 0d | 1", std::string(kNext) + " | " + kNext + " | -2d | 1",
                          std::string(kMost) + " | " + kMost + " | 1.5d | 1"));
  EXPECT_THAT(rows(u"select top 1 n from Decimals order by n"), ElementsAre(kLeast));
  EXPECT_THAT(rows(u"select m from Decimals where n = (select max(n) from Decimals)"),
              ElementsAre("1.5d"));
  EXPECT_THAT(rows(u"select count(*) from Decimals a inner join Decimals b on a.n = b.n"),
              ElementsAre("4"));
  EXPECT_THAT(
      rows(u"select n + 1, n & '', -n, Abs(n), Nz(n), IIf(n > 0, n, m), Sum(n) from Decimals "
           u"where n = 1.5 and n in (select m from Decimals) and n in (1.5, 2) and n between "
           u"2 and m and n not in (select 2.5 from Depts) group by n, m"),
      ElementsAre("2.5 | '1.5' | -1.5 | 1.5 | 1.5 | 1.5d | 1.5"));
}

TEST_F(Select, JoinsOfAllKindsNestToAnyDepth) {
  EXPECT_THAT(
      sorted(u"select i.id, d.title from Items as i inner join Depts as d on i.dept=d.id"),
      ElementsAre("1 | 'Dairy'", "2 | 'Drinks'", "3 | 'Dairy'", "5 | 'Drinks'", "8 | 'Dairy'"));
  EXPECT_THAT(sorted(u"select i.id, d.title from Items i left join Depts d on i.dept=d.id "
                     u"where i.id > 6"),
              ElementsAre("7 | null", "8 | 'Dairy'", "9 | null"));
  EXPECT_THAT(sorted(u"select i.id, d.title from Items i right outer join Depts d on i.dept=d.id "
                     u"and i.qty > 5"),
              ElementsAre("2 | 'Drinks'", "8 | 'Dairy'", "null | null"));
  // An inner join on the right of an outer one returns rows of both its tables or of none.
  EXPECT_THAT(sorted(u"select i.id, c.code, d.title from Items i left join (Codes c inner join "
                     u"Depts d on d.id = 'D' & (c.id - 49)) on i.id = c.item where i.id<6"),
              ElementsAre("1 | null | null", "2 | '333' | null", "3 | null | null",
                          "4 | null | null", "5 | '111' | 'Drinks'", "5 | '222' | 'Dairy'"));
  EXPECT_THAT(sorted(u"select a.id, b.id, c.code from (Items a left join Items b on a.id=b.qty) "
                     u"inner join (Codes c left join Depts d on c.code=d.id) on a.id = c.item"),
              ElementsAre("2 | null | '333'", "5 | null | '111'", "5 | null | '222'"));
  EXPECT_THAT(sorted(u"select d.id, e.id from Depts d, Depts e where d.id < e.id"),
              ElementsAre("'D1' | 'D2'", "'D1' | 'D3'", "'D2' | 'D3'"));
}

TEST_F(Select, ColumnsWithEqualNamesArePrefixedWithTheirTablesNames) {
  EXPECT_EQ(littleShop().columns(u"select * from Depts d inner join Items i on i.dept=d.id"),
            "d.id,title,i.id,name,price,qty,dept,active,sold,ratio");
  EXPECT_EQ(littleShop().columns(u"select i.*, d.id as dep from Depts d, Items i"),
            "id,name,price,qty,dept,active,sold,ratio,dep");
  EXPECT_THAT(rows(u"select q.[d.id] from (select * from Depts d, Codes c where c.code='111') as q "
                   u"order by 1 desc"),
              ElementsAre("'D3'", "'D2'", "'D1'"));
  EXPECT_THAT(rows(u"select [Items]![id] from [Items] where `items`.`NAME` = 'coffee'"),
              ElementsAre("2"));
  EXPECT_THAT(rows(u"select id+1 as a, a*2 as b from Items where id=1"), ElementsAre("2 | 4"));
}

TEST_F(Select, UnionsDropEqualRowsUnlessAll) {
  EXPECT_THAT(rows(u"select name from Items where qty=4 union select 'TEA' from Depts order by 1"),
              ElementsAre("'tea'"));
  EXPECT_THAT(rows(u"select id from Items where id<3 union all select qty from Items where id=1 "
                   u"order by id"),
              ElementsAre("1", "1", "2"));
  EXPECT_THAT(sorted(u"select price from Items where id=5 union select id from Items where id=1"),
              ElementsAre("$1", "$2.5"));
  EXPECT_THAT(sorted(u"(select 1 from Depts) union (select 'a' from Depts) union all "
                     u"select null from Empty"),
              ElementsAre("'a'", "1"));
}

TEST_F(Select, SubqueriesSeeTheRowOfTheOuterQuery) {
  EXPECT_THAT(sorted(u"select id from Items i where exists (select * from Codes where item=i.id)"),
              ElementsAre("2", "5"));
  EXPECT_THAT(sorted(u"select id from Items where id in (select item from Codes)"),
              ElementsAre("2", "5"));
  EXPECT_THAT(sorted(u"select id from Items where dept not in (select id from Depts)"),
              ElementsAre("7"));
  EXPECT_THAT(sorted(u"select id from Items i where price > (select avg(price) from Items "
                     u"where dept = i.dept)"),
              ElementsAre("1", "2"));
  EXPECT_THAT(sorted(u"select id from Items where qty >= all (select qty from Items)"),
              ElementsAre("2"));
  EXPECT_THAT(sorted(u"select id from Items where name = any (select title & '' from Depts) or "
                     u"id > some (select id+5 from Items where id < 3)"),
              ElementsAre("3", "7", "8", "9"));
  EXPECT_THAT(rows(u"select id from Items where not ('x' = any (select title from Depts))"),
              IsEmpty());
  EXPECT_THAT(rows(u"select count(*) from Items inner join Depts on Items.dept = any (select id "
                   u"from Depts where id = 'd2')"),
              ElementsAre("9"));
  EXPECT_THAT(rows(u"select x.many from (select count(*) as many, dept from Items group by dept) "
                   u"as x where x.dept = 'd2'"),
              ElementsAre("3"));
  EXPECT_THAT(
      rows(u"select id, (select title from Depts where id=Items.dept) from Items where id=8"),
      ElementsAre("8 | 'Dairy'"));
}

TEST_F(Select, SavedQueriesRunLikeTables) {
  EXPECT_EQ(littleShop().columns(u"select * from sales"), "ID,DESCRIPTION,code,deptname");
  EXPECT_THAT(rows(u"SELECT ID,DESCRIPTION,code from Sales where description <> \"\" "
                   u"order by description, id, code"),
              ElementsAre("2 | 'Coffee' | '333'", "4 | 'coop milk' | null",
                          "8 | 'co-op milk' | null", "1 | 'Cr\u00E8me' | null", "5 | 'tea' | '111'",
                          "5 | 'tea' | '222'", "7 | 'Tea ' | null"));
  EXPECT_THAT(sorted(u"select id from Sales where deptname = '(NONE)'"),
              ElementsAre("4", "7", "9"));
  EXPECT_THAT(rows(u"select code from [Coded Sales]"), ElementsAre("'333'", "'222'", "'111'"));
  EXPECT_THAT(rows(u"select * from BigTwo"), ElementsAre("10i", "7i"));
  EXPECT_THAT(rows(u"select * from PerDept"),
              ElementsAre("null | 2 | $1.2", "'D1' | 2 | $5.75", "'D2' | 3 | $5.1"));
  EXPECT_THAT(rows(u"select p.many, n.name from PerDept p, Names n where p.many=3 and "
                   u"n.name like 'd*' order by n.name"),
              ElementsAre("3 | 'Dairy'", "3 | 'Drinks'"));
}

}  // namespace
}  // namespace jetsqltest
