#include "platform/adodb/Recordset.h"

#include <algorithm>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/adodb/ObjectError.h"
#include "platform/adodb/RowStore.h"
#include "platform/jet/engine/RowChange.h"
#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/Session.h"

namespace ADODB {
namespace {

constexpr int kLockReadOnly = 1;

}  // namespace

/// The result that is open: its columns, its rows, and where the recordset stands.
struct Recordset::Rows final : public jetsql::RowSink {
  void columns(std::vector<jetsql::ResultColumn> given) override { fields = std::move(given); }
  void row(const jetsql::ResultRow& values) override { store.add(values); }

  bool atEnd() const { return place == store.count(); }
  const jetsql::ResultColumn& field(int column) const {
    return fields[static_cast<std::size_t>(column)];
  }
  runtime::Variant value(int column) const {
    return store.value(place, static_cast<std::size_t>(column), field(column).type);
  }
  /// The table row that holds the column; absent where it can't be written.
  std::optional<jet::RowId> rowOf(int column) const {
    if (isReadOnly || !field(column).table) return std::nullopt;
    const std::uint32_t packed =
        store.source(place, static_cast<std::size_t>(field(column).sourceRow));
    if (packed == 0) return std::nullopt;
    return jet::RowId::unpack(packed);
  }

  void update();
  void updateSource(int sourceRow, jet::RowId id);
  void replaceCurrent(std::span<const runtime::Variant> values);

  std::weak_ptr<jetsql::Session> session;
  std::vector<jetsql::ResultColumn> fields;
  RowStore store;
  std::size_t place = 0;
  bool isReadOnly = false;
  std::map<int, runtime::Variant> staged;  ///< by column
};

/// Writes the staged values, table by table.
void Recordset::Rows::update() {
  while (!staged.empty()) {
    const int column = staged.begin()->first;
    updateSource(field(column).sourceRow, *rowOf(column));
  }
}

void Recordset::Rows::updateSource(int sourceRow, jet::RowId id) {
  const auto isOfSource = [&](const jetsql::ResultColumn& each) {
    return each.table && each.sourceRow == sourceRow;
  };
  jet::RowChange change;
  change.row = id;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (!isOfSource(fields[i])) continue;
    const auto column = static_cast<int>(i);
    change.table = *fields[i].table;
    change.asRead.push_back({fields[i].tableColumn, value(column)});
    const auto set = staged.find(column);
    if (set != staged.end()) change.values.push_back({fields[i].tableColumn, set->second});
  }
  std::vector<runtime::Variant> written = session.lock()->update(change);
  std::erase_if(staged, [&](const auto& each) { return field(each.first).sourceRow == sourceRow; });

  std::vector<runtime::Variant> values;
  auto next = written.begin();
  for (std::size_t i = 0; i < fields.size(); ++i)
    values.push_back(isOfSource(fields[i]) ? std::move(*next++) : value(static_cast<int>(i)));
  replaceCurrent(values);
}

/// Puts other values in the current row's stead; it still comes from the same rows.
void Recordset::Rows::replaceCurrent(std::span<const runtime::Variant> values) {
  std::vector<jetsql::RawValue> raw;
  raw.reserve(values.size());
  for (const runtime::Variant& each : values) raw.push_back(jetsql::rawValue(each));
  int count = 0;
  for (const jetsql::ResultColumn& each : fields)
    if (each.table) count = std::max(count, each.sourceRow + 1);
  std::vector<std::uint32_t> sources;
  sources.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    sources.push_back(store.source(place, static_cast<std::size_t>(i)));
  store.replace(place, {raw, sources});
}

runtime::Variant Field::value() const {
  const Recordset::Rows& rows = owner_->current();
  const auto staged = rows.staged.find(column_);
  return staged != rows.staged.end() ? staged->second : rows.value(column_);
}

void Field::value(runtime::Variant staged) {
  Recordset::Rows& rows = owner_->current();
  if (!rows.rowOf(column_)) throw error::notUpdatable();
  rows.staged[column_] = std::move(staged);
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

void Recordset::Open(std::u16string_view source, Connection& connection, int /*cursorType*/,
                     int lockType, int /*options*/) {
  if (State() == kStateOpen) throw error::objectOpen();
  if (!connection.session_) throw error::connectionClosed();
  auto rows = std::make_unique<Rows>();
  rows->session = connection.session_;
  rows->isReadOnly = lockType == kLockReadOnly;
  connection.session_->run(source, *rows);
  rows_ = std::move(rows);
}

std::int32_t Recordset::RecordCount() const {
  return static_cast<std::int32_t>(open().store.count());
}

bool Recordset::Eof() const {
  return open().atEnd();
}

void Recordset::MoveNext() {
  Rows& rows = current();
  rows.update();
  ++rows.place;
}

Field Recordset::Fields(std::u16string_view name) {
  const Rows& rows = open();
  for (std::size_t i = 0; i < rows.fields.size(); ++i) {
    if (jet::sameName(rows.fields[i].name, name)) return Field(*this, static_cast<int>(i));
  }
  throw error::noSuchItem();
}

int Recordset::FieldCount() const {
  return static_cast<int>(open().fields.size());
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
