#include "NativeStore.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <variant>
#include <vector>

#include "platform/runtime/CodePage.h"

namespace bench {
namespace {

using makestore::Column;
using makestore::Index;
using makestore::StoreTable;

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Closer>;
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

Database open(const std::filesystem::path& path) {
  sqlite3* database = nullptr;
  if (sqlite3_open(path.c_str(), &database) != SQLITE_OK)
    throw std::runtime_error("can't open " + path.string());
  return Database(database);
}

Statement prepare(const Database& database, const std::string& text) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database.get(), text.c_str(), -1, &statement, nullptr) != SQLITE_OK)
    throw std::runtime_error(text + ": " + sqlite3_errmsg(database.get()));
  return Statement(statement);
}

void execute(const Database& database, const std::string& text) {
  if (sqlite3_exec(database.get(), text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
    throw std::runtime_error(text + ": " + sqlite3_errmsg(database.get()));
}

/// The column's definition in SQL. The store compares texts without regard to case, so the native
/// file does too.
std::string columnSql(const StoreTable& table, const Column& column) {
  std::string sql = runtime::toUtf8(column.name);
  const bool isKey = !table.indexes().empty() && table.indexes()[0].primary &&
                     table.indexes()[0].columns[0].column == column.name;
  if (jet::isText(column.type)) return sql + " TEXT COLLATE NOCASE" + (isKey ? " PRIMARY KEY" : "");
  return sql + (isKey ? " INTEGER PRIMARY KEY" : "");
}

std::string createTable(const StoreTable& table) {
  std::string text = "CREATE TABLE " + runtime::toUtf8(table.name()) + " (";
  for (const Column& column : table.columns())
    text += (text.back() == '(' ? "" : ", ") + columnSql(table, column);
  return text + ")";
}

class Binder {
 public:
  Binder(sqlite3_stmt* statement, int index) : statement_(statement), index_(index) {}

  void operator()(runtime::Null) const { sqlite3_bind_null(statement_, index_); }
  void operator()(bool value) const { sqlite3_bind_int(statement_, index_, value ? -1 : 0); }
  void operator()(std::uint8_t value) const { sqlite3_bind_int(statement_, index_, value); }
  void operator()(std::int16_t value) const { sqlite3_bind_int(statement_, index_, value); }
  void operator()(std::int32_t value) const { sqlite3_bind_int(statement_, index_, value); }
  void operator()(float value) const { sqlite3_bind_double(statement_, index_, value); }
  void operator()(double value) const { sqlite3_bind_double(statement_, index_, value); }
  void operator()(runtime::Date value) const {
    sqlite3_bind_double(statement_, index_, value.days);
  }
  void operator()(runtime::Currency value) const {
    sqlite3_bind_double(statement_, index_, static_cast<double>(value.tenThousandths) / 10000);
  }
  void operator()(const std::u16string& value) const { text(value); }
  void operator()(const runtime::Decimal& value) const { text(value.digits); }
  void operator()(const runtime::Binary& value) const { bytes(value.data(), value.size()); }
  void operator()(const runtime::Guid& value) const {
    bytes(value.bytes.data(), value.bytes.size());
  }

 private:
  void text(const std::u16string& value) const {
    const std::string utf8 = runtime::toUtf8(value);
    sqlite3_bind_text(statement_, index_, utf8.data(), static_cast<int>(utf8.size()),
                      SQLITE_TRANSIENT);
  }
  void bytes(const void* data, std::size_t size) const {
    sqlite3_bind_blob(statement_, index_, data, static_cast<int>(size), SQLITE_TRANSIENT);
  }

  sqlite3_stmt* statement_;
  int index_;
};

void insertRows(const Database& database, const StoreTable& table) {
  std::string text = "INSERT INTO " + runtime::toUtf8(table.name()) + " VALUES (";
  for (std::size_t i = 0; i < table.columns().size(); ++i) text += i == 0 ? "?" : ", ?";
  const Statement statement = prepare(database, text + ")");
  for (const StoreTable::Row& row : table.rows()) {
    for (std::size_t i = 0; i < row.values.size(); ++i)
      std::visit(Binder(statement.get(), static_cast<int>(i) + 1), row.values[i].get());
    if (sqlite3_step(statement.get()) != SQLITE_DONE)
      throw std::runtime_error(sqlite3_errmsg(database.get()));
    sqlite3_reset(statement.get());
  }
}

void createIndexes(const Database& database, const StoreTable& table) {
  for (const Index& index : table.indexes()) {
    if (index.primary) continue;
    const std::string name = runtime::toUtf8(table.name());
    const std::string column = runtime::toUtf8(index.columns[0].column);
    execute(database, "CREATE INDEX " + name + "_" + column + " ON " + name + "(" + column + ")");
  }
}

constexpr const char* kSalesItems =
    "CREATE VIEW qrySalesitems AS SELECT tblStock.id AS ID, tblStock.description AS DESCRIPTION, "
    "tblPlu.barcode AS barcode, tblDepartment.description AS deptname "
    "FROM (tblStock INNER JOIN tblPlu ON tblStock.id = tblPlu.id) "
    "LEFT JOIN tblDepartment ON tblStock.deptid = tblDepartment.id";

}  // namespace

void writeNative(const std::filesystem::path& path, makestore::StoreBuilder& store) {
  std::filesystem::remove(path);
  const Database database = open(path);
  execute(database, "BEGIN");
  for (const char16_t* name : {u"tblStock", u"tblPlu", u"tblDepartment"}) {
    const StoreTable& table = store.tableNamed(name);
    execute(database, createTable(table));
    insertRows(database, table);
    createIndexes(database, table);
  }
  execute(database, kSalesItems);
  execute(database, "COMMIT");
}

int readNative(const std::filesystem::path& path, const std::string& text) {
  const Database database = open(path);
  const Statement statement = prepare(database, text);
  const int columns = sqlite3_column_count(statement.get());
  int rows = 0;
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    for (int i = 0; i < columns; ++i) sqlite3_column_text(statement.get(), i);
    ++rows;
  }
  return rows;
}

int readNativeFields(const std::filesystem::path& path, const std::string& text,
                     std::span<const char* const> names, const FieldsOfRow& use) {
  const Database database = open(path);
  const Statement statement = prepare(database, text);
  const int columns = sqlite3_column_count(statement.get());
  std::vector<std::u16string> fields(names.size());
  int rows = 0;
  for (; sqlite3_step(statement.get()) == SQLITE_ROW; ++rows) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      int column = 0;
      while (column < columns &&
             sqlite3_stricmp(sqlite3_column_name(statement.get(), column), names[i]) != 0)
        ++column;
      const auto* units =
          static_cast<const char16_t*>(sqlite3_column_text16(statement.get(), column));
      const auto size =
          static_cast<std::size_t>(sqlite3_column_bytes16(statement.get(), column)) / 2;
      fields[i].assign(units == nullptr ? u"" : units, units == nullptr ? 0 : size);
    }
    use(fields);
  }
  return rows;
}

}  // namespace bench
