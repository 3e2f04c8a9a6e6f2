// A complete store database. Opens it; reads the catalog and every table, by a scan and by each
// index; runs every saved query; and changes one row that has a text. A find is an error that is
// not one of the database provider's.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/engine/Database.h"
#include "platform/jet/engine/ObjectCatalog.h"
#include "platform/jet/engine/Pager.h"
#include "platform/jet/format/Header.h"
#include "platform/jetsql/sqlite/Session.h"
#include "platform/runtime/RunTimeError.h"

namespace {

void readRow(const jet::Row& row, const jet::Table& table) {
  for (std::size_t i = 0; i < table.columns().size(); ++i) {
    static_cast<void>(row.value(jet::ColumnIndex(i)));
    static_cast<void>(row.isNull(jet::ColumnIndex(i)));
  }
}

void readTable(const jet::Table& table) {
  const auto scan = table.scan();
  std::string key;
  while (scan->next()) {
    readRow(scan->row(), table);
    for (std::size_t i = 0; i < table.columns().size(); ++i)
      if (jet::isText(table.columns()[i].type)) scan->row().sortKey(jet::ColumnIndex(i), key);
  }
  for (std::size_t i = 0; i < table.indexes().size(); ++i) {
    const jet::IndexNumber index(i);
    const auto walk = table.walk(index, {});
    while (walk->next()) readRow(walk->row(), table);
    if (!table.index(index).seekable) continue;
    jet::IndexRange range;
    range.equal = {runtime::Variant()};
    const auto nulls = table.walk(index, range);
    while (nulls->next()) readRow(nulls->row(), table);
  }
}

void changeOneRow(jetsql::Session& session, const jet::Table& table) {
  const auto scan = table.scan();
  if (!scan->next()) return;
  for (std::size_t i = 0; i < table.columns().size(); ++i) {
    const jet::ColumnIndex column(i);
    if (table.column(column).type != jet::ColumnType::Text) continue;
    session.update({.table = table.identity(),
                    .row = scan->row().id(),
                    .values = {{table.identity(column), u"changed"}},
                    .asRead = {{table.identity(column), scan->row().value(column)}}});
    return;
  }
}

/// Runs a saved query. The error of one that can't run is ignored, so that the others run too.
void runQuery(jetsql::Session& session, const std::u16string& name) {
  try {
    static_cast<void>(session.run(u"select * from [" + name + u"]"));
  } catch (const runtime::RunTimeError&) {
  }
}

std::vector<jet::CatalogObject> objectsOf(const std::filesystem::path& file) {
  jet::Pager pager(file, u"store");
  return jet::ObjectCatalog(pager).objects();
}

void useAll(const std::filesystem::path& file, const std::u16string& password) {
  jetsql::Session session(file, u"store", password);
  jet::Database& database = session.database();
  std::optional<jet::CatalogObject> changed;
  for (const jet::CatalogObject& object : objectsOf(file)) {
    if (object.kind == jet::ObjectKind::Query) runQuery(session, object.name);
    if (object.kind != jet::ObjectKind::Table) continue;
    database.find(object.name);
    const jet::Table& table = database.table(object);
    readTable(table);
    if (!object.name.starts_with(u"MSys")) changed = object;
  }
  if (changed) changeOneRow(session, database.table(*changed));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto header = jet::Header::decode({data, size});
  if (!header) return 0;
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("store-" + std::to_string(getpid()) + ".mdb");
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  try {
    useAll(file, header->password);
  } catch (const runtime::RunTimeError& fault) {
    if (fault.number() > -2147200000) __builtin_trap();
  }
  return 0;
}
