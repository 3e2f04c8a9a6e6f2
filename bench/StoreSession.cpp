#include "StoreSession.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "layoutdata/Statements.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"
#include "platform/runtime/CodePage.h"

namespace bench {
namespace {

constexpr std::u16string_view kStorePassword = u"w7rt3q8814Z";
constexpr int kUnspecified = -1;
constexpr int kKeyset = 1;
constexpr int kPessimistic = 2;

void open(ADODB::Connection& connection, const std::filesystem::path& path) {
  std::u16string text = u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
  text += runtime::fromUtf8(path.string());
  text += u";Jet OLEDB:Database Password=";
  text += kStorePassword;
  connection.Open(text, u"", u"", kUnspecified);
  connection.CursorLocation(ADODB::kUseClient);
}

constexpr const char16_t* kFlags[] = {u"PRINTER1", u"PRINTER2", u"OPEN_PLU", u"ITEM_TYPE",
                                      u"NEG_PRICE"};

void openFlags(ADODB::Recordset& flags, ADODB::Connection& connection, const std::u16string& id) {
  flags.Open(std::u16string(layoutdata::statements::kFlags) + id, connection, kKeyset, kPessimistic,
             kUnspecified);
}

}  // namespace

int readStore(const std::filesystem::path& path, std::u16string_view statement) {
  ADODB::Connection connection;
  open(connection, path);
  ADODB::Recordset rows;
  rows.Open(statement, connection, kKeyset, kPessimistic, kUnspecified);
  const int columns = rows.FieldCount();
  int count = 0;
  for (; !rows.Eof(); rows.MoveNext(), ++count)
    for (int i = 0; i < columns; ++i) static_cast<void>(rows.FieldAt(i).value() & u"");
  rows.Close();
  connection.Close();
  return count;
}

int readStoreFields(const std::filesystem::path& path, std::u16string_view statement,
                    std::span<const char16_t* const> names) {
  ADODB::Connection connection;
  open(connection, path);
  ADODB::Recordset rows;
  rows.Open(statement, connection, kKeyset, kPessimistic, kUnspecified);
  int count = 0;
  for (; !rows.Eof(); rows.MoveNext(), ++count)
    for (const char16_t* name : names) static_cast<void>(rows.Fields(name).value() & u"");
  rows.Close();
  connection.Close();
  return count;
}

void addProduct(const std::filesystem::path& path, std::u16string_view name) {
  namespace statements = layoutdata::statements;
  ADODB::Connection connection;
  open(connection, path);
  ADODB::Recordset stock;
  stock.Open(statements::kFreeSlots, connection, kKeyset, kPessimistic, kUnspecified);
  stock.Fields(u"description").value(name);
  stock.Fields(u"price").value(2.5);
  stock.Fields(u"deptid").value(u"3");
  stock.Update();
  const std::u16string id = stock.Fields(u"id").value().toText();
  stock.Close();
  ADODB::Recordset flags;
  openFlags(flags, connection, id);
  for (const char16_t* column : kFlags) flags.Fields(column).value(std::int16_t{1});
  flags.Update();
  flags.Close();
  connection.Close();
}

void readFlags(const std::filesystem::path& path, int id) {
  ADODB::Connection connection;
  open(connection, path);
  ADODB::Recordset flags;
  openFlags(flags, connection, runtime::fromUtf8(std::to_string(id)));
}

void rewriteFlags(const std::filesystem::path& path, int id) {
  ADODB::Connection connection;
  open(connection, path);
  ADODB::Recordset flags;
  openFlags(flags, connection, runtime::fromUtf8(std::to_string(id)));
  for (const char16_t* column : kFlags) flags.Fields(column).value(flags.Fields(column).value());
  flags.Update();
}

}  // namespace bench
