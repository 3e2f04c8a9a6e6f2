#include "platform/adodb/Recordset.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/adodb/ObjectError.h"
#include "platform/jet/engine/RowChange.h"
#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/sqlite/Session.h"
#include "platform/jetsql/writing/ResultColumn.h"

namespace ADODB {
namespace {

constexpr int kLockReadOnly = 1;

}  // namespace

/// The open result, and the recordset's current row.
struct Recordset::Rows {
  bool atEnd() const { return row == result.count(); }
  const jetsql::ResultColumn& field(int column) const {
    return result.columns()[static_cast<std::size_t>(column)];
  }
  runtime::Variant value(int column) const {
    return result.value(row, static_cast<std::size_t>(column));
  }
  /// The table row that holds the column; absent where it can't be written.
  std::optional<jet::RowId> rowOf(int column) const {
    return isReadOnly ? std::nullopt : result.rowOf(row, static_cast<std::size_t>(column));
  }

  /// The column of that name; -1 when there is none.
  int columnNamed(std::u16string_view name);
  void update();
  void updateSource(int sourceRow, jet::RowId id);

  std::weak_ptr<jetsql::Session> session;
  jetsql::Result result;
  std::size_t row = 0;
  bool isReadOnly = false;
  std::map<int, runtime::Variant> staged;  ///< by column
  std::vector<std::pair<std::u16string, int>>
      columnCache;  ///< columns by names that were asked for
};

/// Callers request the same few names in each row, so the costly name comparison runs only once for
/// each spelling.
int Recordset::Rows::columnNamed(std::u16string_view name) {
  for (const auto& [spelling, column] : columnCache) {
    // Cheaper than ==, which compares UTF-16 texts unit by unit.
    if (std::ranges::equal(spelling, name)) return column;
  }
  const auto& columns = result.columns();
  const auto found = std::ranges::find_if(columns, [name](const jetsql::ResultColumn& column) {
    return jet::sameName(column.name, name);
  });
  if (found == columns.end()) return -1;
  return columnCache.emplace_back(name, static_cast<int>(found - columns.begin())).second;
}

/// Writes the staged values, table by table.
void Recordset::Rows::update() {
  while (!staged.empty()) {
    const int column = staged.begin()->first;
    updateSource(field(column).sourceRow, *rowOf(column));
  }
}

void Recordset::Rows::updateSource(int sourceRow, jet::RowId id) {
  jet::RowChange change;
  change.row = id;
  for (int i = 0; i < static_cast<int>(result.columns().size()); ++i) {
    const jetsql::ResultColumn& each = field(i);
    if (!each.table || each.sourceRow != sourceRow) continue;
    change.table = *each.table;
    change.asRead.push_back({each.tableColumn, value(i)});
    const auto set = staged.find(i);
    if (set != staged.end()) change.values.push_back({each.tableColumn, set->second});
  }
  const std::vector<runtime::Variant> written = session.lock()->update(change);
  std::erase_if(staged, [&](const auto& each) { return field(each.first).sourceRow == sourceRow; });
  result.replace(row, sourceRow, written);
}

Recordset::Recordset() = default;
Recordset::~Recordset() = default;

Recordset::Rows& Recordset::open() const {
  if (!rows_ || rows_->session.expired()) throw error::objectClosed();
  return *rows_;
}

Recordset::Rows& Recordset::current() const {
  Rows& rows = open();
  if (rows.atEnd()) throw error::noCurrentRecord();
  return rows;
}

runtime::Variant Recordset::value(int column) const {
  const Rows& rows = current();
  const auto staged = rows.staged.find(column);
  return staged != rows.staged.end() ? staged->second : rows.value(column);
}

void Recordset::stage(int column, runtime::Variant value) {
  Rows& rows = current();
  if (!rows.rowOf(column)) throw error::notUpdatable();
  rows.staged[column] = std::move(value);
}

void Recordset::Open(std::u16string_view source, Connection& connection, int /*cursorType*/,
                     int lockType, int /*options*/) {
  if (State() == kStateOpen) throw error::objectOpen();
  if (!connection.session_) throw error::connectionClosed();
  auto rows = std::make_unique<Rows>();
  rows->session = connection.session_;
  rows->isReadOnly = lockType == kLockReadOnly;
  rows->result = connection.session_->run(source);
  rows_ = std::move(rows);
}

std::int32_t Recordset::RecordCount() const {
  return static_cast<std::int32_t>(open().result.count());
}

bool Recordset::Eof() const {
  return open().atEnd();
}

void Recordset::MoveNext() {
  Rows& rows = current();
  rows.update();
  ++rows.row;
}

Field Recordset::Fields(std::u16string_view name) {
  const int column = open().columnNamed(name);
  if (column < 0) throw error::noSuchItem();
  return Field(*this, column);
}

int Recordset::FieldCount() const {
  return static_cast<int>(open().result.columns().size());
}

std::u16string Recordset::FieldName(int column) const {
  if (column < 0 || column >= FieldCount()) throw error::noSuchItem();
  return open().field(column).name;
}

Field Recordset::FieldAt(int column) {
  if (column < 0 || column >= FieldCount()) throw error::noSuchItem();
  return Field(*this, column);
}

void Recordset::Update() {
  current().update();
}

void Recordset::Close() {
  if (!open().staged.empty()) throw error::valueStaged();
  rows_.reset();
}

int Recordset::State() const {
  return rows_ && !rows_->session.expired() ? kStateOpen : kStateClosed;
}

}  // namespace ADODB
