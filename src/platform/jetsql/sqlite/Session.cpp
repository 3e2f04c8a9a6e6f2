#include "platform/jetsql/sqlite/Session.h"

#include <utility>
#include <vector>

#include "platform/jet/engine/Database.h"
#include "platform/jet/engine/RowChange.h"
#include "platform/jet/format/EngineError.h"
#include "platform/jetsql/binding/QueryBinder.h"
#include "platform/jetsql/binding/RuleCondition.h"
#include "platform/jetsql/sqlite/RowOrder.h"
#include "platform/jetsql/sqlite/SqlConnection.h"
#include "platform/jetsql/sqlite/SqlValue.h"
#include "platform/jetsql/syntax/QueryParser.h"
#include "platform/runtime/RunTimeError.h"

namespace jetsql {
namespace {

/// A row of a table that supplies values of a result.
class SourceRow {
 public:
  explicit SourceRow(const KnownTable& known) : known_(known), reader_(known.use.table->reader()) {}

  /// Moves to a row; 0 stands for none. SQLite's reader is usually at that row already.
  void find(std::uint32_t id) {
    row_ = nullptr;
    if (id == 0) return;
    const jet::Row* current = known_.currentRow();
    if (current != nullptr && current->id().pack() == id) {
      row_ = current;
    } else if (reader_.find(jet::RowId::unpack(id))) {
      row_ = &reader_.row();
    }
  }
  const jet::Row* row() const { return row_; }

 private:
  const KnownTable& known_;
  jet::RowReader reader_;
  const jet::Row* row_ = nullptr;
};

/// Reads the rows of a prepared statement into a result.
class Reader {
 public:
  Reader(SqlConnection& connection, const WrittenStatement& statement, jet::TextOrder order)
      : connection_(connection),
        statement_(statement),
        order_(order),
        ids_(statement.sourceRows.size()),
        result_(statement.columns, statement.sourceRows.size()) {
    for (const int number : statement.sourceRows)
      sourceRows_.emplace_back(connection.table(number));
  }
  ~Reader() { connection_.finish(); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  Result read() {
    while (connection_.step()) readRow();
    connection_.finish();  // frees SQLite's memory before the rows are copied
    if (!statement_.order.empty()) result_.arrange(order_.sorted());
    return std::move(result_);
  }

 private:
  void readRow() {
    for (std::size_t i = 0; i < ids_.size(); ++i) {
      sqlite3_value* id = connection_.value(static_cast<int>(i));
      ids_[i] = static_cast<std::uint32_t>(sqlite3_value_int64(id));
      sourceRows_[i].find(ids_[i]);
    }
    result_.beginRow(ids_);
    for (const ValueSource& value : statement_.values) {
      const jet::Row* row = rowOf(value);
      row != nullptr ? result_.add(*row, value) : result_.add(calculated(value));
    }
    result_.endRow();
    if (statement_.order.empty()) return;
    for (const OrderSource& term : statement_.order) {
      const jet::Row* row = rowOf(term.value);
      row != nullptr ? order_.add(*row, term.value, term.descending)
                     : order_.add(calculated(term.value), term.descending);
    }
    order_.endRow();
  }

  /// The table row that holds the value; null where it is calculated or there is none.
  const jet::Row* rowOf(const ValueSource& value) const {
    if (value.table == nullptr) return nullptr;
    return sourceRows_[static_cast<std::size_t>(value.sourceRow)].row();
  }

  runtime::Variant calculated(const ValueSource& value) const {
    if (value.table != nullptr) return {};
    return sqlValue(connection_.value(value.sqlColumn), value.type);
  }

  SqlConnection& connection_;
  const WrittenStatement& statement_;
  RowOrder order_;
  std::vector<SourceRow> sourceRows_;
  std::vector<std::uint32_t> ids_;
  Result result_;
};

}  // namespace

Session::Session(const std::filesystem::path& file, std::u16string_view shownPath,
                 std::u16string_view password)
    : database_(std::make_unique<jet::Database>(file, shownPath, jet::Password{password})) {}

Session::~Session() = default;

Result Session::run(std::u16string_view statement) {
  const jet::Database::Reading untilDone(*database_);
  return execute(parseStatement(statement));
}

std::vector<runtime::Variant> Session::update(const jet::RowChange& change) {
  const auto holds = [this](const jet::ValidationRule& rule, const jet::NewRow& row) {
    try {
      return execute(violationQuery(rule, row)).count() == 0;
    } catch (const runtime::RunTimeError& failure) {
      throw jet::error::ruleUnusable(rule.expression, rule.subject(), failure.text());
    }
  };
  return database_->update(change, holds);
}

/// Runs a parsed statement under the lock that is held.
Result Session::execute(const ParsedQuery& query) {
  const WrittenStatement written = writeStatement(QueryBinder(*database_).bind(query));
  if (!connection_) connection_ = std::make_unique<SqlConnection>(database_->textOrder());
  connection_->prepare(written);
  return Reader(*connection_, written, database_->textOrder()).read();
}

}  // namespace jetsql
