#include "platform/jetsql/TableModule.h"

#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/jetsql/TableReader.h"

namespace jetsql {
namespace {

/// Reading a row costs about as much as this many steps.
constexpr std::int64_t kRowWork = 10;

/// What a registered table is made of.
struct Registration {
  TableUse use;
  KeptFailure* failure = nullptr;
  WorkBudget* budget = nullptr;
};

struct VirtualTable {
  sqlite3_vtab base{};
  Registration* registration = nullptr;
  std::vector<std::unique_ptr<IndexPlan>> plans;  ///< that SQLite has been told, by number
};

struct VirtualCursor {
  explicit VirtualCursor(const VirtualTable& owner)
      : table(&owner),
        reader(*owner.registration->use.table),
        keys(owner.registration->use.columns.size()) {}

  sqlite3_vtab_cursor base{};
  const VirtualTable* table;
  TableReader reader;
  std::vector<SoughtValue> sought;
  std::u16string text;
  /// The keys of the row that were asked for already.
  struct Key {
    std::uint64_t row = 0;
    bool isNull = false;
    std::string bytes;
  };
  std::vector<Key> keys;
};

VirtualTable& tableOf(sqlite3_vtab* base) {
  return *reinterpret_cast<VirtualTable*>(base);
}
VirtualCursor& cursorOf(sqlite3_vtab_cursor* base) {
  return *reinterpret_cast<VirtualCursor*>(base);
}

/// Runs a callback; what it throws is kept, and SQLite told to stop.
template <class Body>
int guarded(KeptFailure& failure, Body body) noexcept {
  try {
    body();
    return SQLITE_OK;
  } catch (...) {
    failure.keep();
    return SQLITE_ERROR;
  }
}

int connect(sqlite3* connection, void* data, int, const char* const*, sqlite3_vtab** table,
            char**) {
  auto& registration = *static_cast<Registration*>(data);
  return guarded(*registration.failure, [&] {
    std::string columns = "CREATE TABLE t(c0";
    for (std::size_t i = 1; i < registration.use.columns.size(); ++i) {
      columns += ",c" + std::to_string(i);
    }
    if (sqlite3_declare_vtab(connection, (columns + ")").c_str()) != SQLITE_OK) {
      throw std::bad_alloc();
    }
    auto made = std::make_unique<VirtualTable>();
    made->registration = &registration;
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
      return Restriction::Test::Greater;
    case SQLITE_INDEX_CONSTRAINT_GE:
      return Restriction::Test::GreaterOrEqual;
    case SQLITE_INDEX_CONSTRAINT_LT:
      return Restriction::Test::Less;
    case SQLITE_INDEX_CONSTRAINT_LE:
      return Restriction::Test::LessOrEqual;
    default:
      return std::nullopt;
  }
}

/// The column of a constraint; absent for the row number and for a table without columns.
const Demand* columnOf(const TableUse& use, int column) {
  if (column < 0 || column >= static_cast<int>(use.columns.size())) return nullptr;
  return &use.columns[static_cast<std::size_t>(column)];
}

std::vector<Restriction> restrictionsOf(const sqlite3_index_info& info, const TableUse& use) {
  std::vector<Restriction> restrictions;
  for (int i = 0; i < info.nConstraint; ++i) {
    const auto& constraint = info.aConstraint[i];
    const auto test = testOf(constraint.op);
    const Demand* column = columnOf(use, constraint.iColumn);
    if (constraint.usable == 0 || !test || column == nullptr) continue;
    restrictions.push_back({*test, *column, i});
  }
  return restrictions;
}

/// The wanted order; empty when it isn't one of columns.
std::vector<WantedOrder> orderOf(const sqlite3_index_info& info, const TableUse& use) {
  std::vector<WantedOrder> order;
  for (int i = 0; i < info.nOrderBy; ++i) {
    const Demand* column = columnOf(use, info.aOrderBy[i].iColumn);
    if (column == nullptr) return {};
    order.push_back({*column, info.aOrderBy[i].desc != 0});
  }
  return order;
}

int numberOfPlan(VirtualTable& table, IndexPlan plan) {
  for (std::size_t i = 0; i < table.plans.size(); ++i) {
    if (table.plans[i]->samePath(plan)) return static_cast<int>(i);
  }
  table.plans.push_back(std::make_unique<IndexPlan>(std::move(plan)));
  return static_cast<int>(table.plans.size()) - 1;
}

int bestIndex(sqlite3_vtab* base, sqlite3_index_info* info) {
  VirtualTable& table = tableOf(base);
  return guarded(*table.registration->failure, [&] {
    const TableUse& use = table.registration->use;
    IndexPlan plan = chooseIndex(*use.table, restrictionsOf(*info, use), orderOf(*info, use));
    for (std::size_t i = 0; i < plan.taken.size(); ++i) {
      auto& usage = info->aConstraintUsage[plan.taken[i].number];
      usage.argvIndex = static_cast<int>(i) + 1;
      usage.omit = plan.taken[i].isSingle() ? 1 : 0;
    }
    info->estimatedCost = plan.cost;
    info->estimatedRows = static_cast<sqlite3_int64>(plan.rows);
    info->orderByConsumed = plan.ordered ? 1 : 0;
    info->idxStr = sqlite3_mprintf("%s", plan.describe(*use.table).c_str());
    info->needToFreeIdxStr = 1;
    info->idxNum = numberOfPlan(table, std::move(plan));
  });
}

int open(sqlite3_vtab* base, sqlite3_vtab_cursor** cursor) {
  const VirtualTable& table = tableOf(base);
  return guarded(*table.registration->failure,
                 [&] { *cursor = &std::make_unique<VirtualCursor>(table).release()->base; });
}

int close(sqlite3_vtab_cursor* cursor) {
  delete &cursorOf(cursor);
  return SQLITE_OK;
}

SoughtValue soughtOf(sqlite3_value* value) {
  SoughtValue sought;
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      sought.kind = SoughtValue::Kind::Whole;
      sought.whole = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      sought.kind = SoughtValue::Kind::Number;
      sought.number = sqlite3_value_double(value);
      break;
    case SQLITE_BLOB:
    case SQLITE_TEXT:
      sought.kind = SoughtValue::Kind::Bytes;
      sought.bytes = {static_cast<const char*>(sqlite3_value_blob(value)),
                      static_cast<std::size_t>(sqlite3_value_bytes(value))};
      break;
    default:
      break;
  }
  return sought;
}

int filter(sqlite3_vtab_cursor* base, int plan, const char*, int count, sqlite3_value** values) {
  VirtualCursor& cursor = cursorOf(base);
  return guarded(*cursor.table->registration->failure, [&] {
    cursor.table->registration->budget->spend(kRowWork);
    cursor.sought.clear();
    for (int i = 0; i < count; ++i) cursor.sought.push_back(soughtOf(values[i]));
    cursor.reader.start(*cursor.table->plans[static_cast<std::size_t>(plan)], cursor.sought);
  });
}

int next(sqlite3_vtab_cursor* base) {
  VirtualCursor& cursor = cursorOf(base);
  return guarded(*cursor.table->registration->failure, [&] {
    cursor.table->registration->budget->spend(kRowWork);
    cursor.reader.next();
  });
}

int atEnd(sqlite3_vtab_cursor* base) {
  return cursorOf(base).reader.atEnd() ? 1 : 0;
}

void giveText(sqlite3_context* context, const std::u16string& text) {
  sqlite3_result_text16(context, text.empty() ? u"" : text.data(),
                        static_cast<int>(text.size() * 2), SQLITE_TRANSIENT);
}

void giveBlob(sqlite3_context* context, const void* bytes, std::size_t size) {
  sqlite3_result_blob64(context, size == 0 ? "" : bytes, size, SQLITE_TRANSIENT);
}

/// A value of the less common types.
void giveValue(sqlite3_context* context, const runtime::Variant& value, Form form) {
  const auto& held = value.get();
  if (const auto* amount = std::get_if<runtime::Currency>(&held)) {
    if (form == Form::Exact) return sqlite3_result_int64(context, amount->tenThousandths);
    sqlite3_result_double(context, amount->toDouble());
  } else if (const auto* single = std::get_if<float>(&held)) {
    sqlite3_result_double(context, *single);
  } else if (const auto* number = std::get_if<double>(&held)) {
    sqlite3_result_double(context, *number);
  } else if (const auto* date = std::get_if<runtime::Date>(&held)) {
    sqlite3_result_double(context, date->days);
  } else if (const auto* decimal = std::get_if<runtime::Decimal>(&held)) {
    if (form == Form::Exact) return giveText(context, decimal->digits);
    sqlite3_result_double(
        context,
        std::strtod(std::string(decimal->digits.begin(), decimal->digits.end()).c_str(), nullptr));
  } else if (const auto* binary = std::get_if<runtime::Binary>(&held)) {
    giveBlob(context, binary->data(), binary->size());
  } else if (const auto* guid = std::get_if<runtime::Guid>(&held)) {
    giveBlob(context, guid->bytes.data(), guid->bytes.size());
  }
}

void giveKey(sqlite3_context* context, VirtualCursor& cursor, std::size_t place, int column) {
  VirtualCursor::Key& key = cursor.keys[place];
  if (key.row != cursor.reader.rowsRead()) {
    key.row = cursor.reader.rowsRead();
    key.isNull = !cursor.reader.row().sortKey(column, key.bytes);
  }
  if (!key.isNull) giveBlob(context, key.bytes.data(), key.bytes.size());
}

/// A text for the reader of the result: a byte a letter where it is stored so.
void giveExactText(sqlite3_context* context, VirtualCursor& cursor, int column) {
  const jet::Row& row = cursor.reader.row();
  if (const auto bytes = row.latinText(column)) {
    giveBlob(context, bytes->data(), bytes->size());
  } else if (row.text(column, cursor.text)) {
    giveText(context, cursor.text);
  }
}

int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int place) {
  VirtualCursor& cursor = cursorOf(base);
  return guarded(*cursor.table->registration->failure, [&] {
    const TableUse& use = cursor.table->registration->use;
    const Demand* demand = columnOf(use, place);
    if (demand == nullptr) return;
    const jet::Row& row = cursor.reader.row();
    if (demand->form == Form::RowId) return sqlite3_result_int64(context, row.id().pack());
    if (demand->form == Form::Key) {
      return giveKey(context, cursor, static_cast<std::size_t>(place), demand->column);
    }
    switch (use.table->columns()[static_cast<std::size_t>(demand->column)].type) {
      case jet::ColumnType::Boolean:
      case jet::ColumnType::Byte:
      case jet::ColumnType::Integer:
      case jet::ColumnType::Long: {
        std::int32_t whole = 0;
        if (row.integer(demand->column, whole)) sqlite3_result_int(context, whole);
        break;
      }
      case jet::ColumnType::Text:
      case jet::ColumnType::Memo:
        if (demand->form == Form::Exact) return giveExactText(context, cursor, demand->column);
        if (row.text(demand->column, cursor.text)) giveText(context, cursor.text);
        break;
      default:
        giveValue(context, row.value(demand->column), demand->form);
        break;
    }
  });
}

int rowNumber(sqlite3_vtab_cursor* base, sqlite3_int64* number) {
  *number = cursorOf(base).reader.row().id().pack();
  return SQLITE_OK;
}

/// Without a creating method the table exists by the module's name alone.
const sqlite3_module& module() {
  static const sqlite3_module made = [] {
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
  return made;
}

}  // namespace

void registerTable(sqlite3* connection, const TableUse& use, KeptFailure& failure,
                   WorkBudget& budget) {
  const std::string name = "t" + std::to_string(use.number);
  // SQLite releases the registration also when it refuses it.
  const int status = sqlite3_create_module_v2(
      connection, name.c_str(), &module(), new Registration{use, &failure, &budget},
      [](void* data) { delete static_cast<Registration*>(data); });
  if (status != SQLITE_OK) throw std::bad_alloc();
}

}  // namespace jetsql
