#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SmallStore.h"

namespace jetsqltest {
namespace {

struct Case {
  const char16_t* statement;
  const char* failure;
};

void check(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    EXPECT_EQ(littleShop().failure(each.statement), each.failure) << narrow(each.statement);
  }
}

TEST(StatementError, ASyntaxErrorQuotesTheExpression) {
  check({{u"select id from Items where name = 'O'Brien's' and name <> \"\" order by name",
          "-2147217900: Syntax error (missing operator) in query expression 'name = 'O'Brien's' "
          "and name <> \"\"'."},
         {u"select id from Items where name = 'O'Brien'",
          "-2147217900: Syntax error in string in query expression 'name = 'O'Brien''."},
         {u"select id from Items where name = \"a order by id",
          "-2147217900: Syntax error in string in query expression 'name = \"a order by id'."},
         {u"select id from Items where sold > #13/45/2004#",
          "-2147217900: Syntax error in date in query expression 'sold > #13/45/2004#'."},
         {u"select id from Items where id =",
          "-2147217900: Syntax error (missing operator) in query expression 'id ='."},
         {u"select id from Items where id != 3",
          "-2147217900: Syntax error (missing operator) in query expression 'id != 3'."},
         {u"select (id from Items",
          "-2147217900: Syntax error (missing operator) in query expression '(id from "
          "Items'."},
         {u"select id from Items where (id=1",
          "-2147217900: Missing ), ], or Item in query expression '(id=1'."},
         {u"select id x from Items",
          "-2147217900: Syntax error (missing operator) in query expression 'id x'."},
         {u"select count(distinct id) from Items",
          "-2147217900: Syntax error (missing operator) in query expression 'count(distinct id)'."},
         {u"select id from Items where [id = 3",
          "-2147217900: Invalid bracketing of name '[id = 3'."}});
}

TEST(StatementError, ASyntaxErrorOutsideExpressionsNamesTheClause) {
  check({{u"select id from", "-2147217900: Syntax error in FROM clause."},
         {u"select id from Items where id=1 order id",
          "-2147217900: Syntax error in ORDER BY clause."},
         {u"select * from Items inner join Depts", "-2147217900: Syntax error in JOIN operation."},
         {u"select i.id from Items i left join (Codes c inner join Depts d on d.id = i.dept) on "
          u"i.id = c.item",
          "-2147217900: JOIN expression not supported."},
         {u"select from Items",
          "-2147217900: The SELECT statement includes a reserved word or an argument name that is "
          "misspelled or missing, or the punctuation is incorrect."},
         {u"select id from Items; select 1",
          "-2147217900: Characters found after end of SQL statement."},
         {u"drop table Items",
          "3251: Object or provider is not capable of performing requested operation."},
         {u"Items",
          "-2147217900: Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', "
          "or 'UPDATE'."},
         {u"select id from Items union select id, title from Depts",
          "-2147217900: The number of columns in the two selected tables or queries of a union "
          "query do not match."}});
}

TEST(StatementError, UnknownAndAmbiguousNamesAreRefused) {
  constexpr const char* kParameter =
      "-2147217904: No value given for one or more required parameters.";
  check({{u"select nothing from Items", kParameter},
         {u"select Items.nothing from Items", kParameter},
         {u"select i.id from Items where i.id=1", kParameter},
         {u"parameters x Long; select id from Items where id=x", kParameter},
         {u"select id from Asks", kParameter},
         {u"select id*2 as two from Items where two=4", kParameter},
         {u"select id from Items, Depts",
          "-2147217900: The specified field 'id' could refer to more than one table listed in the "
          "FROM clause of your SQL statement."},
         {u"select * from Nowhere",
          "-2147217865: The database engine cannot find the input table or query "
          "'Nowhere'.  Make sure it exists and that its name is spelled correctly."},
         {u"select Frob(id) from Items", "-2147217900: Undefined function 'Frob' in expression."},
         {u"select * from Strange", "-2147217900: Undefined function 'Frobnicate' in expression."},
         {u"select * from Far",
          "-2147467259: The query 'Far' reads another database, which can't be opened here."},
         {u"select Left('a') from Items",
          "-2147217900: Wrong number of arguments used with function in query expression 'Left'."},
         {u"select id as a, qty as A from Items", "-2147217900: Duplicate output alias 'a'."},
         {u"select * from LoopA", "-2147467259: Circular reference caused by 'LoopA'."}});
}

TEST(StatementError, SelectedColumnsMustBeGroupedOrAggregated) {
  check({{u"select name, count(*) from Items",
          "-2147217900: You tried to execute a query that does not include the specified "
          "expression 'name' as part of an aggregate function."},
         {u"select dept from Items group by dept order by qty",
          "-2147217900: You tried to execute a query that does not include the specified "
          "expression 'qty' as part of an aggregate function."},
         {u"select dept, (select title from Depts where id = name) from Items group by dept",
          "-2147217900: You tried to execute a query that does not include the specified "
          "expression 'name' as part of an aggregate function."},
         {u"select count(*) as n from Items group by n",
          "-2147217900: Cannot have aggregate function in WHERE clause (n)."},
         {u"select id from Items where count(*) > 1",
          "-2147217900: Cannot have aggregate function in WHERE clause (Count(*))."},
         {u"select distinct name from Items order by id",
          "-2147217900: ORDER BY clause (id) conflicts with DISTINCT."}});
}

TEST(StatementError, IncompatibleValuesRaiseAnError) {
  constexpr const char* kMismatch = "-2147217913: Data type mismatch in criteria expression.";
  check({{u"select id from Items where name = 5", kMismatch},
         {u"select id from Items where id In (1, 'a')", kMismatch},
         {u"select i.id from Items i inner join Depts d on i.id = d.id", kMismatch},
         {u"select 'abc' * 2", kMismatch},
         {u"select CInt('x')", kMismatch},
         {u"select CInt(Null)", "-2147217913: Invalid use of Null."},
         {u"select CInt(40000)", "-2147217833: Overflow"},
         {u"select 2147483647 + 1", "-2147217833: Overflow"},
         {u"select 1E308 * 10", "-2147217833: Overflow"},
         {u"select 1/(id-1) from Items", "-2147217900: Division by zero"},
         {u"select Left(name, -1) from Items", "-2147217900: Invalid procedure call."},
         {u"select (select id from Items) from Depts",
          "-2147467259: At most one record can be returned by this subquery."}});
  // A value that its type doesn't hold fails when it is read, not when the result is opened.
  EXPECT_EQ(littleShop().session().run(u"select 2147483647 + id from Items where id < 3").count(),
            2U);
}

// Saved queries come from files that anybody may have written.
TEST(StatementError, HostileStatementsEndInAnError) {
  std::u16string deep = u"select ";
  for (int i = 0; i < 20000; ++i) deep += u"(";
  std::u16string signs = u"select " + std::u16string(60000, u'-') + u"1";
  std::u16string chain = u"select 1";
  for (int i = 0; i < 20000; ++i) chain += u"+1";
  std::u16string doubling = u"select id as a0";
  for (int i = 1; i < 200; ++i) {
    const std::u16string before = u"a" + wide(std::to_string(i - 1));
    doubling += u", " + before + u"+" + before + u" as a" + wide(std::to_string(i));
  }
  doubling += u" from Items";
  std::u16string product = u"select count(*) from Items a0";
  for (int i = 1; i < 12; ++i) product += u", Items a" + wide(std::to_string(i));
  std::u16string crowd = u"select 1 from Depts a0";
  for (int i = 1; i < 150; ++i) crowd += u", Depts a" + wide(std::to_string(i));
  const std::u16string longText = u"select '" + std::u16string(70000, u'x') + u"'";
  const std::u16string longWork =
      u"select count(*) from Items a, Items b, Items c, Items d, Items e "
      u"where String(1000000, 'x') & a.id & b.id & c.id & d.id & e.id Like '*y'";
  for (const auto& statement : {deep, signs, chain, doubling, product, crowd, longText, longWork}) {
    EXPECT_TRUE(littleShop().failure(statement).starts_with("-2147467259: Query is too complex"))
        << narrow(statement.substr(0, 80)) << ": " << littleShop().failure(statement);
  }
}

TEST(StatementError, LeavesTheSessionUsable) {
  EXPECT_NE(littleShop().failure(u"select 1/(id-1) from Items"), "");
  EXPECT_EQ(littleShop().rows(u"select 1/(id-1) from Items where id=3").at(0), "0.5");
}

}  // namespace
}  // namespace jetsqltest
