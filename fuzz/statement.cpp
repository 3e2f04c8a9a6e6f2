// A statement of the store's dialect, run on a small store. A find is an error text of SQLite's
// own, which shows that SQLite refused a statement that was parsed and bound.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "makestore/StoreBuilder.h"
#include "platform/jetsql/sqlite/Session.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"

namespace {

makestore::StoreBuilder littleStore() {
  using jet::ColumnType;
  makestore::StoreBuilder builder;
  makestore::StoreTable& table = builder.table(u"t");
  table.column({.name = u"a"})
      .column(makestore::Column::text(u"b", 20))
      .column({.name = u"c", .type = ColumnType::Currency})
      .column({.name = u"d", .type = ColumnType::DateTime})
      .column({.name = u"e", .type = ColumnType::Boolean})
      .column({.name = u"f", .type = ColumnType::Double})
      .index(makestore::Index::primaryKey(u"a"))
      .index(makestore::Index::plain(u"b"));
  for (int i = 0; i < 6; ++i) {
    table.row({std::int32_t{i}, i == 3 ? runtime::Variant() : runtime::Variant(u"Item"),
               runtime::Currency{i * 12345}, runtime::Date{38000.5 + i}, i % 2 == 0, i / 3.0});
  }
  builder.table(u"u")
      .column({.name = u"a"})
      .column(makestore::Column::text(u"g", 20))
      .row({std::int32_t{2}, u"two"})
      .row({std::int32_t{2}, u"zwei"});
  builder.query(makestore::SelectQuery()
                    .column(u"t.a", u"x")
                    .column(u"b")
                    .column(u"u.g")
                    .from(u"t")
                    .from(u"u")
                    .leftJoin(u"t", u"u", u"t.a = u.a")
                    .named(u"q"));
  return builder;
}

jetsql::Session& store() {
  static jetsql::Session session = [] {
    const auto file =
        std::filesystem::temp_directory_path() / ("statement-" + std::to_string(getpid()) + ".mdb");
    littleStore().write(file);
    return jetsql::Session(file, u"store", u"");
  }();
  return session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const jetsql::Result result =
        store().run(runtime::fromCodePage({reinterpret_cast<const char*>(data), size}));
    for (std::size_t row = 0; row < result.count(); ++row) {
      for (std::size_t column = 0; column < result.columns().size(); ++column) {
        static_cast<void>(result.value(row, column));
      }
    }
  } catch (const runtime::RunTimeError& fault) {
    // SQLite must accept the text of every statement that was parsed and bound.
    for (const std::u16string_view words :
         {u"no such", u"syntax error", u"ambiguous", u"incomplete", u"misuse", u"datatype"}) {
      if (fault.text().find(words) != std::u16string::npos) __builtin_trap();
    }
  }
  return 0;
}
