#include "platform/jet/RandomUpdates.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "platform/jet/StoreFiles.h"
#include "platform/runtime/RunTimeError.h"

namespace jettest {
namespace {

using runtime::Variant;

std::vector<std::string> valuesOf(const jet::Row& row, const jet::Table& table) {
  std::vector<std::string> values;
  for (std::size_t i = 0; i < table.columns().size(); ++i)
    values.push_back(printed(row.value(jet::ColumnIndex(i))));
  return values;
}

bool isChangeable(const jet::ColumnDefinition& column) {
  return column.type != jet::ColumnType::Block && column.type != jet::ColumnType::Numeric &&
         !column.autonumber;
}

}  // namespace

RandomUpdates::RandomUpdates(std::filesystem::path file, std::u16string password,
                             std::uint32_t seed)
    : file_(std::move(file)), password_(std::move(password)), generator_(seed) {
  jet::Database database(file_, u"the file", jet::Password{password_});
  for (const jet::CatalogObject& object : objectsOf(file_)) {
    if (object.kind != jet::ObjectKind::Table || object.name.starts_with(u"MSys")) continue;
    const jet::Table& table = database.table(object);
    TableModel model;
    model.name = object.name;
    const auto scan = table.scan();
    while (scan->next()) {
      model.rows[scan->row().id()] = valuesOf(scan->row(), table);
      model.ids.push_back(scan->row().id());
    }
    if (!model.ids.empty() && std::ranges::any_of(table.columns(), isChangeable))
      tables_.push_back(std::move(model));
  }
}

int RandomUpdates::random(int below) {
  return std::uniform_int_distribution<int>(0, below - 1)(generator_);
}

std::u16string RandomUpdates::randomText(std::size_t most) {
  // Mostly short, so that there are equal keys; sometimes long, so that pages fill.
  const int longest = static_cast<int>(std::min<std::size_t>(most, random(4) == 0 ? 255 : 20));
  const std::u16string_view letters =
      u"abcdefghijklmnopqrstuvwxyzABCDEFGH0123456789    "
      u"----''&/.,\u00e9\u00e0\u00f1\u00df\u0153\u20ac";
  std::u16string text;
  for (int i = random(longest + 1); i > 0; --i)
    text.push_back(letters[static_cast<std::size_t>(random(static_cast<int>(letters.size())))]);
  if (random(3) == 0)
    text.insert(0, u"aaaaaaaaaaaaaaaa", std::min<std::size_t>(16, most - text.size()));
  return text;
}

Variant RandomUpdates::randomValue(const jet::ColumnDefinition& column, jet::Version version) {
  if (random(8) == 0 && column.type != jet::ColumnType::Boolean) return runtime::Null{};
  switch (column.type) {
    case jet::ColumnType::Boolean:
      return random(2) == 0;
    case jet::ColumnType::Byte:
      return static_cast<std::uint8_t>(random(256));
    case jet::ColumnType::Integer:
      return static_cast<std::int16_t>(random(65536) - 32768);
    case jet::ColumnType::Long:
      return random(2) == 0 ? random(100) : static_cast<std::int32_t>(generator_());
    case jet::ColumnType::Currency:
      return runtime::Currency{static_cast<std::int64_t>(generator_()) - (1LL << 31)};
    case jet::ColumnType::Single:
      return static_cast<float>(random(100000) - 50000) / 8;
    case jet::ColumnType::Double:
      return static_cast<double>(random(1000000) - 500000) / 16;
    case jet::ColumnType::DateTime:
      return runtime::Date{static_cast<double>(random(60000 * 24)) / 24};
    case jet::ColumnType::Guid: {
      runtime::Guid guid;
      for (std::uint8_t& byte : guid.bytes) byte = static_cast<std::uint8_t>(random(256));
      return guid;
    }
    case jet::ColumnType::Text:
      return randomText(version == jet::Version::Jet3 ? column.length : column.length / 2);
    case jet::ColumnType::Memo:
      return randomText(255);
    case jet::ColumnType::Binary:
    case jet::ColumnType::Ole:
    case jet::ColumnType::Numeric:
    case jet::ColumnType::Block: {
      const std::size_t most = column.type == jet::ColumnType::Ole ? 9000 : column.length;
      runtime::Binary bytes(static_cast<std::size_t>(random(static_cast<int>(most) + 1)));
      for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random(256));
      return bytes;
    }
  }
  return runtime::Null{};
}

Change RandomUpdates::next(jet::Database& database) {
  const TableModel& model =
      tables_[static_cast<std::size_t>(random(static_cast<int>(tables_.size())))];
  const jet::Table& table = tableNamed(database, model.name);
  Change change;
  change.table = model.name;
  change.row = model.ids[static_cast<std::size_t>(random(static_cast<int>(model.ids.size())))];
  std::map<jet::ColumnIndex, Variant> assigned;
  for (int tries = 1 + random(3); tries > 0; --tries) {
    const jet::ColumnIndex column(random(static_cast<int>(table.columns().size())));
    const jet::ColumnDefinition& definition = table.column(column);
    if (isChangeable(definition)) assigned[column] = randomValue(definition, database.version());
  }
  for (const auto& [column, value] : assigned) change.values.push_back({column, value});
  return change;
}

bool RandomUpdates::make(jet::Database& database, const Change& change) {
  try {
    update(database, tableNamed(database, change.table), change.row, change.values);
  } catch (const runtime::RunTimeError& error) {
    ++refused_[error.number()];
    if (std::strstr(error.what(), "damaged") != nullptr) throw;
    return false;
  }
  const auto model = std::ranges::find(tables_, change.table, &TableModel::name);
  for (const auto& [column, value] : change.values)
    model->rows[change.row][column.value()] = printed(value);
  ++made_;
  return true;
}

void makeChange(const std::filesystem::path& file, std::u16string_view password,
                const Change& change) {
  jet::Database database(file, u"the file", jet::Password{password});
  update(database, tableNamed(database, change.table), change.row, change.values);
}

void RandomUpdates::run(int count) {
  if (tables_.empty()) return;
  jet::Database database(file_, u"the file", jet::Password{password_});
  const int goal = made_ + count;
  // A file may have tables that refuse most changes.
  for (int tries = 50 * count; made_ < goal && tries > 0; --tries) make(database, next(database));
}

std::vector<std::string> RandomUpdates::problems() const {
  jet::Database database(file_, u"the file", jet::Password{password_});
  std::vector<std::string> problems;
  for (const TableModel& model : tables_) {
    const jet::Table& table = tableNamed(database, model.name);
    for (std::string& problem : indexProblems(table)) problems.push_back(std::move(problem));
    std::size_t seen = 0;
    const auto scan = table.scan();
    while (scan->next()) {
      ++seen;
      const auto expected = model.rows.find(scan->row().id());
      const auto values = valuesOf(scan->row(), table);
      if (expected == model.rows.end() || expected->second != values)
        problems.push_back(narrow(model.name) + ": row " + printed(scan->row().id()) +
                           " differs from the model");
    }
    if (seen != model.rows.size()) problems.push_back(narrow(model.name) + ": rows are missing");
  }
  const std::string verdict = checkerVerdict(file_);
  if (verdict != "sound") problems.push_back(verdict);
  return problems;
}

}  // namespace jettest
