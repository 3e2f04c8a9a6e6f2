#include "platform/jetsql/sqlite/TableModule.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/jetsql/sqlite/SqlValue.h"

namespace jetsql {
namespace {

/// Reading a row costs about as much as this many steps.
constexpr std::int64_t kRowWork = 10;

struct VirtualTable {
  sqlite3_vtab base{};
  KnownTable* known = nullptr;
};

struct VirtualCursor {
  sqlite3_vtab_cursor base{};
  KnownTable* known = nullptr;
  std::optional<TableReader> reader;  ///< created for `plan`
  PlanCode plan;
  std::vector<runtime::Variant> values;
  std::u16string text;
};

VirtualTable& tableOf(sqlite3_vtab* base) {
  return *reinterpret_cast<VirtualTable*>(base);
}
VirtualCursor& cursorOf(sqlite3_vtab_cursor* base) {
  return *reinterpret_cast<VirtualCursor*>(base);
}

/// Runs a callback; if it throws, stores the exception and tells SQLite to stop.
template <class Body>
int run(KnownTable& known, Body body) noexcept {
  return guarded(known.state->failure, body) ? SQLITE_OK : SQLITE_ERROR;
}

int connect(sqlite3* connection, void* data, int, const char* const*, sqlite3_vtab** table,
            char**) {
  auto& known = *static_cast<KnownTable*>(data);
  return run(known, [&] {
    std::string columns = "CREATE TABLE t(";
    for (const jet::ColumnIndex column : known.use.columns) {
      columns += "c" + std::to_string(column.value());
      if (isTextual(known.typeOf(column))) columns += std::string(" COLLATE ") + kCollation;
      columns += ",";
    }
    if (sqlite3_declare_vtab(connection, (columns + "r)").c_str()) != SQLITE_OK) {
      throw std::bad_alloc();
    }
    auto made = std::make_unique<VirtualTable>();
    made->known = &known;
    *table = &made.release()->base;
  });
}

int disconnect(sqlite3_vtab* table) {
  delete &tableOf(table);
  return SQLITE_OK;
}

std::optional<Restriction::Test> testOf(unsigned char op) {
  switch (op) {
    case SQLITE_INDEX_CONSTRAINT_EQ:
      return Restriction::Test::Equal;
    case SQLITE_INDEX_CONSTRAINT_ISNULL:
      return Restriction::Test::IsNull;
    case SQLITE_INDEX_CONSTRAINT_GT:
    case SQLITE_INDEX_CONSTRAINT_GE:
      return Restriction::Test::Lower;
    case SQLITE_INDEX_CONSTRAINT_LT:
    case SQLITE_INDEX_CONSTRAINT_LE:
      return Restriction::Test::Upper;
    default:
      return std::nullopt;
  }
}

std::vector<Restriction> restrictionsOf(const sqlite3_index_info& info,
                                        const std::vector<jet::ColumnIndex>& columns) {
  std::vector<Restriction> restrictions;
  for (int i = 0; i < info.nConstraint; ++i) {
    const auto& constraint = info.aConstraint[i];
    const auto test = testOf(constraint.op);
    const auto index = static_cast<std::size_t>(constraint.iColumn);
    if (constraint.usable != 0 && test && index < columns.size()) {
      restrictions.push_back({*test, columns[index], i});
    }
  }
  return restrictions;
}

int bestIndex(sqlite3_vtab* base, sqlite3_index_info* info) {
  KnownTable& known = *tableOf(base).known;
  return run(known, [&] {
    const IndexPlan plan = chooseIndex(*known.use.table, restrictionsOf(*info, known.use.columns));
    const PlanCode code = PlanCode::of(plan);
    // SQLite tests the rows itself, since the reader may return some that don't meet a restriction.
    for (std::size_t i = 0; i < plan.taken.size(); ++i) {
      info->aConstraintUsage[plan.taken[i].number].argvIndex = static_cast<int>(i) + 1;
    }
    info->estimatedCost = plan.cost;
    info->estimatedRows = static_cast<sqlite3_int64>(plan.rows);
    if (plan.isUnique) info->idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
    info->idxNum = code.number;
    info->idxStr = sqlite3_mprintf("%s", code.tests.c_str());
    info->needToFreeIdxStr = 1;
  });
}

int open(sqlite3_vtab* base, sqlite3_vtab_cursor** cursor) {
  KnownTable& known = *tableOf(base).known;
  return run(known, [&] {
    auto made = std::make_unique<VirtualCursor>();
    made->known = &known;
    *cursor = &made.release()->base;
  });
}

int close(sqlite3_vtab_cursor* base) {
  VirtualCursor& cursor = cursorOf(base);
  if (cursor.reader && cursor.known->reader == &*cursor.reader) cursor.known->reader = nullptr;
  delete &cursor;
  return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int number, const char* tests, int count,
           sqlite3_value** values) {
  VirtualCursor& cursor = cursorOf(base);
  return run(*cursor.known, [&] {
    cursor.known->state->budget.spend(kRowWork);
    if (PlanCode plan{number, tests}; !cursor.reader || cursor.plan != plan) {
      cursor.plan = std::move(plan);
      cursor.reader.emplace(*cursor.known->use.table, cursor.plan);
    }
    cursor.values.clear();
    for (int i = 0; i < count; ++i) {
      const jet::ColumnIndex sought = cursor.reader->columns()[static_cast<std::size_t>(i)];
      cursor.values.push_back(sqlValue(values[i], cursor.known->typeOf(sought)));
    }
    cursor.reader->start(cursor.values);
    cursor.known->reader = &*cursor.reader;
  });
}

int next(sqlite3_vtab_cursor* base) {
  VirtualCursor& cursor = cursorOf(base);
  return run(*cursor.known, [&] {
    cursor.known->state->budget.spend(kRowWork);
    cursor.reader->next();
    cursor.known->reader = &*cursor.reader;
  });
}

int atEnd(sqlite3_vtab_cursor* base) {
  return cursorOf(base).reader->atEnd() ? 1 : 0;
}

void setText(sqlite3_context* context, const std::u16string& text) {
  sqlite3_result_text16(context, text.c_str(), static_cast<int>(text.size() * 2), SQLITE_TRANSIENT);
}

void setBytes(sqlite3_context* context, const void* bytes, std::size_t size) {
  sqlite3_result_blob64(context, size == 0 ? "" : bytes, size, SQLITE_TRANSIENT);
}

/// A value of the less common types.
void setValue(sqlite3_context* context, const runtime::Variant& value) {
  const auto& held = value.get();
  if (const auto* amount = std::get_if<runtime::Currency>(&held)) {
    sqlite3_result_int64(context, amount->tenThousandths);
  } else if (const auto number = value.number()) {
    sqlite3_result_double(context, *number);
  } else if (const auto* decimal = std::get_if<runtime::Decimal>(&held)) {
    setText(context, decimalText(*decimal));
  } else if (const auto* binary = std::get_if<runtime::Binary>(&held)) {
    setBytes(context, binary->data(), binary->size());
  } else if (const auto* guid = std::get_if<runtime::Guid>(&held)) {
    setBytes(context, guid->bytes.data(), guid->bytes.size());
  }
}

int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int number) {
  VirtualCursor& cursor = cursorOf(base);
  return run(*cursor.known, [&] {
    const std::vector<jet::ColumnIndex>& columns = cursor.known->use.columns;
    const jet::Row& row = cursor.reader->row();
    if (number == static_cast<int>(columns.size())) {
      return sqlite3_result_int64(context, row.id().pack());
    }
    const jet::ColumnIndex index = columns[static_cast<std::size_t>(number)];
    const Type type = cursor.known->typeOf(index);
    if (isInteger(type)) {
      std::int32_t integer = 0;
      if (row.integer(index, integer)) sqlite3_result_int(context, integer);
      return;
    }
    if (!isTextual(type)) return setValue(context, row.value(index));
    if (const auto latin = row.latinText(index)) {
      cursor.text.resize(latin->size());
      std::ranges::copy(*latin, cursor.text.begin());
    } else if (!row.text(index, cursor.text)) {
      return;
    }
    setText(context, cursor.text);
  });
}

int rowNumber(sqlite3_vtab_cursor* base, sqlite3_int64* number) {
  *number = cursorOf(base).reader->row().id().pack();
  return SQLITE_OK;
}

/// Without an `xCreate` method a table of the module's name exists at once.
constexpr sqlite3_module kModule = [] {
  sqlite3_module methods{};
  methods.xConnect = connect;
  methods.xBestIndex = bestIndex;
  methods.xDisconnect = disconnect;
  methods.xOpen = open;
  methods.xClose = close;
  methods.xFilter = filter;
  methods.xNext = next;
  methods.xEof = atEnd;
  methods.xColumn = column;
  methods.xRowid = rowNumber;
  return methods;
}();

}  // namespace

KnownTable& registerTable(sqlite3* connection, const TableUse& use, EvaluationState& state) {
  const std::string name = "t" + std::to_string(use.number);
  auto* known = new KnownTable{use, &state};
  // SQLite releases the table even if it refuses it.
  const int status =
      sqlite3_create_module_v2(connection, name.c_str(), &kModule, known,
                               [](void* data) { delete static_cast<KnownTable*>(data); });
  if (status != SQLITE_OK) throw std::bad_alloc();
  return *known;
}

}  // namespace jetsql
