// Validation rules of columns and of rows.

#include <gtest/gtest.h>

#include "TestStore.h"
#include "makestore/StoreBuilder.h"
#include "platform/files/ProgramFolder.h"

namespace adodbtest {
namespace {

namespace fs = std::filesystem;

using makestore::Column;
using makestore::Rule;
using runtime::Null;
using runtime::Variant;

constexpr std::u16string_view kItem = u"select id, name, amount, most from Items where id = 1";

/// One item with a name of "tea", an amount of 3 and nothing in `most`.
struct Items {
  Rule name;
  Rule amount;
  Rule row;
  Rule most;

  void write(const fs::path& file) const {
    makestore::StoreBuilder store;
    makestore::StoreTable& table = store.password(std::u16string(kStorePassword)).table(u"Items");
    Column nameColumn = Column::text(u"name", 20);
    nameColumn.rule = name;
    table.column({.name = u"id"})
        .column(nameColumn)
        .column({.name = u"amount", .type = jet::ColumnType::Currency, .rule = amount})
        .column({.name = u"most", .type = jet::ColumnType::Double, .rule = most})
        .index(makestore::Index::primaryKey(u"id"))
        .rule(row)
        .row({std::int32_t{1}, u"tea", runtime::Currency{30000}, Null{}});
    fs::create_directories(file.parent_path());
    store.write(file);
  }
};

class Rules : public testing::Test {
 protected:
  /// The failure of setting a column of the item; empty where the value is written.
  std::string failureOfSetting(const Items& items, std::u16string_view column,
                               const Variant& value) {
    const support::ProgramFolder folder;
    const fs::path file = folder.path() / "Stores" / "Items.mdb";
    items.write(file);
    const auto before = support::readFile(file);
    ADODB::Connection connection;
    connection.Open(connectionString(files::programFolder() + u"\\Stores\\Items.mdb"), u"", u"",
                    -1);
    ADODB::Recordset rows;
    rows.Open(kItem, connection, 1, 2, -1);
    rows.Fields(column).value(value);
    std::string failure = failureOf([&] { rows.Update(); });
    EXPECT_EQ(support::readFile(file) == before, !failure.empty());
    if (failure.empty()) {
      EXPECT_EQ(rows.Fields(column).value() & u"", value & u"");
    }
    return failure;
  }
};

TEST_F(Rules, AColumnsRuleIsACriterionWithTheColumnAsLeftOperand) {
  struct Case {
    const char16_t* rule;
    Variant accepted;
    Variant refused;
  };
  const Variant null = Null{};
  const auto amount = [](double value) { return Variant(value); };
  for (const Case& each : {
           Case{u">=0", amount(0), amount(-0.5)},
           Case{u">=0", null, amount(-1)},
           Case{u"Is Not Null", amount(0), null},
           Case{u"Between 1 And 10 And <>5 Or Is Null", null, amount(5)},
           Case{u"Not Between 1 And 10", amount(11), amount(1)},
           Case{u"In (2, 4)", amount(4), amount(3.5)},
           Case{u"5", amount(5), amount(6)},
           Case{u"Not 5 And Not 6", amount(7), amount(6)},
           Case{u"(>0 And <5) Or 99", amount(99), amount(5)},
           Case{u">(1+1)*2", amount(4.5), amount(4)},
           Case{u"(1+1)*2 or 1", amount(1), amount(2)},
           Case{u"[amount] < 10 And Items.Amount > 1", amount(9), amount(1)},
           Case{u"[amount] Mod 2 = 0", amount(8), amount(7)},
           Case{u"[amount]*100 = Int([amount]*100)", amount(4.35), amount(4.355)},
           Case{u"<[id]+1", amount(1), amount(2)},
       }) {
    SCOPED_TRACE(narrow(each.rule));
    const Items items{.name = {}, .amount = {each.rule}, .row = {}, .most = {}};
    EXPECT_EQ(failureOfSetting(items, u"amount", each.accepted), "");
    EXPECT_EQ(failureOfSetting(items, u"amount", each.refused),
              "-2147467259: One or more values are prohibited by the validation rule '" +
                  narrow(each.rule) +
                  "' set for 'Items.amount'.  Enter a value that the expression for this field can "
                  "accept.");
  }
  for (const Case& each : {
           Case{u"Like 'A*' And Not Like \"*x\"", u"apple", u"Ax"},
           Case{u"\"tea\" Or 'and'", u"AND", u"coffee"},
           Case{u"Len([name]) < 4", u"abc", u"abcd"},
           Case{u"In (\"a)\", \"b\")", u"A)", u"c"},
           Case{u"<>''", null, u""},
       }) {
    SCOPED_TRACE(narrow(each.rule));
    const Items items{.name = {each.rule}, .amount = {}, .row = {}, .most = {}};
    EXPECT_EQ(failureOfSetting(items, u"name", each.accepted), "");
    EXPECT_NE(failureOfSetting(items, u"name", each.refused), "");
  }
}

TEST_F(Rules, ARefusalHasTheRulesValidationText) {
  const Items items{.name = {},
                    .amount = {u"<100", u"No more than 100 \u20AC."},
                    .row = {u"[amount] < [most] Or [name] = 'free'", u"Too much."},
                    .most = {u">=1000"}};
  EXPECT_EQ(failureOfSetting(items, u"amount", 100.0), "-2147467259: No more than 100 \u20AC.");
  // While `most` is null the row's rule evaluates to null and so passes; the rule of `most` is
  // tested only when that column is set.
  EXPECT_EQ(failureOfSetting(items, u"amount", 99.0), "");
  EXPECT_NE(failureOfSetting(items, u"most", 4.0), "");
  const Items rows{.name = {}, .amount = {}, .row = items.row, .most = {}};
  EXPECT_EQ(failureOfSetting(rows, u"most", 3.0), "-2147467259: Too much.");
  EXPECT_EQ(failureOfSetting(rows, u"most", 3.5), "");
  // Setting the value that the column has already is tested as well.
  EXPECT_NE(failureOfSetting({.name = {u"<>'tea'"}, .amount = {}, .row = {}, .most = {}}, u"name",
                             u"tea"),
            "");
}

TEST_F(Rules, ARuleThatCannotBeParsedRefusesWithAReason) {
  const auto why = [&](const char16_t* rule) {
    const std::string failure = failureOfSetting(
        {.name = {}, .amount = {rule, u"Never shown."}, .row = {}, .most = {}}, u"amount", 1.0);
    const std::string head = "-2147467259: The validation rule '" + narrow(rule) +
                             "' set for 'Items.amount' can't be tried: ";
    return failure.starts_with(head) ? failure.substr(head.size()) : failure;
  };
  EXPECT_EQ(why(u">="), "Syntax error (missing operator) in query expression '[amount] >='.");
  EXPECT_EQ(why(u"<[price]"), "The table has no column 'price'.");
  EXPECT_EQ(why(u"Soundex([name])='T000'"), "Undefined function 'Soundex' in expression.");
  EXPECT_EQ(why(u"In (select amount from Items)"), "A rule can't contain a query.");
  EXPECT_NE(why(u"Sum([amount]) > 1").find("aggregate"), std::string::npos);
  EXPECT_NE(why(u")"), "");
  EXPECT_NE(why(u"'x"), "");
}

}  // namespace
}  // namespace adodbtest
