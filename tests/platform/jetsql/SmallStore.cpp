#include "SmallStore.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <variant>

#include "storesql/StatementPlan.h"
#include "support/FileFaults.h"

namespace jetsqltest {
namespace {

using jet::ColumnType;
using makestore::Column;
using makestore::Index;
using runtime::Currency;
using runtime::Date;
using runtime::Decimal;
using runtime::Null;

std::string joined(const std::vector<std::string>& pieces, std::string_view between) {
  std::string result;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) result += between;
    result += pieces[i];
  }
  return result;
}

std::string decimal(double number, int digits) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.*g", digits, number);
  std::string shown = text.data();
  if (shown.find_first_of(".e") == std::string::npos) shown += ".0";
  return shown;
}

struct Shown {
  std::string operator()(Null) const { return "null"; }
  std::string operator()(bool value) const { return value ? "yes" : "no"; }
  std::string operator()(std::uint8_t value) const { return std::to_string(value) + "b"; }
  std::string operator()(std::int16_t value) const { return std::to_string(value) + "i"; }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(Currency value) const {
    std::array<char, 40> text{};
    const auto units = static_cast<long long>(value.tenThousandths / 10000);
    const auto rest = static_cast<long long>(value.tenThousandths % 10000);
    std::snprintf(text.data(), text.size(), "%s$%lld.%04lld", value.tenThousandths < 0 ? "-" : "",
                  std::abs(units), std::abs(rest));
    std::string shown = text.data();
    while (shown.back() == '0') shown.pop_back();
    if (shown.back() == '.') shown.pop_back();
    return shown;
  }
  std::string operator()(float value) const { return decimal(value, 7) + "f"; }
  std::string operator()(double value) const { return decimal(value, 15); }
  std::string operator()(Date value) const {
    return "@" + narrow(runtime::Variant(value).toText());
  }
  std::string operator()(const std::u16string& value) const { return "'" + narrow(value) + "'"; }
  std::string operator()(const runtime::Binary& value) const {
    return std::to_string(value.size()) + " bytes";
  }
  std::string operator()(const runtime::Guid& value) const {
    return narrow(runtime::Variant(value).toText());
  }
  std::string operator()(const runtime::Decimal& value) const { return narrow(value.digits) + "d"; }
};

Currency money(double amount) {
  return {static_cast<std::int64_t>(amount * 10000 + 0.5)};
}

}  // namespace

SmallStore::SmallStore(makestore::StoreBuilder builder) {
  const std::filesystem::path file = scratch_.folder() / "store.mdb";
  builder.write(file);
  session_ = std::make_unique<jetsql::Session>(file, u"store.mdb", u"");
}

std::vector<std::string> SmallStore::rows(std::u16string_view statement) {
  const jetsql::Result result = session_->run(statement);
  std::vector<std::string> lines;
  for (std::size_t row = 0; row < result.count(); ++row) {
    std::vector<std::string> values;
    for (std::size_t column = 0; column < result.columns().size(); ++column) {
      values.push_back(std::visit(Shown{}, result.value(row, column).get()));
    }
    lines.push_back(joined(values, " | "));
  }
  return lines;
}

std::vector<std::string> SmallStore::sortedRows(std::u16string_view statement) {
  std::vector<std::string> lines = rows(statement);
  std::ranges::sort(lines);
  return lines;
}

std::string SmallStore::columns(std::u16string_view statement) {
  const jetsql::Result result = session_->run(statement);
  std::vector<std::string> names;
  for (const auto& column : result.columns()) names.push_back(narrow(column.name));
  return joined(names, ",");
}

std::string SmallStore::failure(std::u16string_view statement) {
  return support::failureOf([&] { rows(statement); });
}

std::string SmallStore::plan(std::u16string_view statement) {
  return joined(storesql::planOf(session_->database(), statement).steps, "; ");
}

namespace {

makestore::StoreBuilder littleStore() {
  makestore::StoreBuilder store;
  makestore::StoreTable& items = store.table(u"Items");
  items.column({.name = u"id"})
      .column(Column::text(u"name", 50))
      .column({.name = u"price", .type = ColumnType::Currency})
      .column({.name = u"qty", .type = ColumnType::Integer})
      .column(Column::text(u"dept", 10))
      .column({.name = u"active", .type = ColumnType::Boolean})
      .column({.name = u"sold", .type = ColumnType::DateTime})
      .column({.name = u"ratio", .type = ColumnType::Double})
      .index(Index::primaryKey(u"id"))
      .index(Index::plain(u"name"));
  const auto item = [&](std::int32_t id, runtime::Variant name, runtime::Variant price,
                        std::int16_t qty, runtime::Variant dept, bool active, runtime::Variant sold,
                        double ratio) {
    items.row({id, std::move(name), std::move(price), qty, std::move(dept), active, std::move(sold),
               ratio});
  };
  // The rows are not in the order of any column.
  item(5, u"tea", money(2.5), 4, u"D1", true, Date{38077.427083333336}, 0.5);
  item(2, u"Coffee", money(3.25), 10, u"d1", true, Date{38000}, 1.5);
  item(9, Null{}, Null{}, 0, Null{}, false, Null{}, 0);
  item(1, u"Cr\u00E8me", money(4), 1, u"D2", false, Date{37000.5}, -2);
  item(7, u"Tea ", money(2.75), 4, u"D9", true, Null{}, 2.25);
  item(3, u"", money(0), 0, u"D2", true, Null{}, 1e20);
  item(8, u"co-op milk", money(1.1), 7, u"D2", false, Date{38077}, 3);
  item(4, u"coop milk", money(1.2), 7, Null{}, false, Null{}, 0.1);

  makestore::StoreTable& depts = store.table(u"Depts");
  depts.column(Column::text(u"id", 10))
      .column(Column::text(u"title", 30))
      .index(Index::primaryKey(u"id"));
  depts.row({u"D2", u"Dairy"}).row({u"D1", u"Drinks"}).row({u"D3", Null{}});

  makestore::StoreTable& codes = store.table(u"Codes");
  codes.column({.name = u"item"}).column(Column::text(u"code", 20)).column({.name = u"id"});
  codes.row({5, u"111", 50}).row({5, u"222", 51}).row({2, u"333", 52});
  codes.row({77, u"444", 53});

  makestore::StoreTable& amounts = store.table(u"Amounts");
  amounts.column({.name = u"amount", .type = ColumnType::Currency});
  for (const long long each : {9223372036854775807LL, 25000LL, 9223372036854775806LL, -25000LL}) {
    amounts.row({Currency{each}}).row({Currency{each}});
  }

  makestore::StoreTable& decimals = store.table(u"Decimals");
  decimals.column({.name = u"n", .type = ColumnType::Numeric, .precision = 28, .scale = 4})
      .column({.name = u"m", .type = ColumnType::Numeric, .precision = 28, .scale = 1})
      .row({Decimal{u"123456789012345678901234.5678"}, Decimal{u"1.5"}})
      .row({Decimal{u"123456789012345678901234.5677"}, Decimal{u"-2.0"}})
      .row({Decimal{u"-123456789012345678901234.5678"}, Decimal{u"1.5"}})
      .row({Decimal{u"1.5000"}, Decimal{u"0.0"}});

  store.table(u"Empty").column({.name = u"id"}).column(Column::text(u"name", 20));

  using makestore::SelectQuery;
  store.query(SelectQuery()
                  .column(u"i.id", u"ID")
                  .column(u"i.name", u"DESCRIPTION")
                  .column(u"c.code")
                  .column(u"IIf(d.title Is Null,\"(none)\",d.title)", u"deptname")
                  .from(u"Items", u"i")
                  .from(u"Depts", u"d")
                  .from(u"Codes", u"c")
                  .leftJoin(u"i", u"d", u"i.dept = d.id")
                  .leftJoin(u"i", u"c", u"i.id = c.item")
                  .named(u"Sales"));
  store.query(SelectQuery()
                  .allColumns()
                  .from(u"Sales")
                  .where(u"Sales.code Is Not Null")
                  .orderBy(u"code", true)
                  .named(u"Coded Sales"));
  store.query(SelectQuery()
                  .distinct()
                  .top(2)
                  .column(u"qty")
                  .from(u"Items")
                  .orderBy(u"qty", true)
                  .named(u"BigTwo"));
  store.query(SelectQuery()
                  .column(u"dept")
                  .column(u"Count(*)", u"many")
                  .column(u"Sum(price)", u"total")
                  .from(u"Items")
                  .groupBy(u"dept")
                  .having(u"Count(*)>1")
                  .orderBy(u"dept")
                  .named(u"PerDept"));
  store.query(makestore::unionQuery(u"Names", u"SELECT name FROM Items WHERE active",
                                    u"SELECT title FROM Depts"));
  store.query(SelectQuery().column(u"id").from(u"Items").where(u"id=[Which one]").named(u"Asks"));
  store.query(SelectQuery().column(u"Frobnicate(id)", u"x").from(u"Items").named(u"Strange"));
  makestore::StoredQuery far = SelectQuery().column(u"id").from(u"Items").named(u"Far");
  far.rows.back().expression = u"C:\\other.mdb";
  store.query(std::move(far));
  store.query(SelectQuery().column(u"*").from(u"LoopB").named(u"LoopA"));
  store.query(SelectQuery().column(u"*").from(u"LoopA").named(u"LoopB"));
  return store;
}

}  // namespace

SmallStore& littleShop() {
  static SmallStore store(littleStore());
  return store;
}

}  // namespace jetsqltest
