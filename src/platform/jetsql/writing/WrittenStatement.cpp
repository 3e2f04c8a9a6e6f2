#include "platform/jetsql/writing/WrittenStatement.h"

#include <algorithm>
#include <utility>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/writing/QueryWriter.h"

namespace jetsql {
namespace {

/// Decides on the columns of SQLite's result: the row ids and values that the statement's reader
/// needs.
class ResultPlanner {
 public:
  ResultPlanner(WrittenStatement& out, const BoundQuery& query) : out_(out), query_(query) {}

  void write() {
    for (std::size_t i = 0; i < query_.columns.size(); ++i) addColumn(static_cast<int>(i));
    for (std::size_t i = 0; i < query_.orderBy.size(); ++i) addOrder(static_cast<int>(i));
    // Calculated values follow the row ids: first the columns', then those of the order alone.
    int next = static_cast<int>(out_.sourceRows.size());
    for (const int column : request_.columns) {
      out_.values[static_cast<std::size_t>(column)].sqlColumn = next++;
    }
    for (std::size_t i = 0; i < query_.orderBy.size(); ++i) {
      ValueSource& value = out_.order[i].value;
      const int output = query_.orderBy[i].output;
      if (output >= 0) value = out_.values[static_cast<std::size_t>(output)];
      if (request_.orderTerms.contains(static_cast<int>(i))) value.sqlColumn = next++;
    }
    StatementWriter writer(out_);
    out_.sql = writeQuery(writer, query_, request_);
  }

 private:
  void addColumn(int index) {
    const OutputColumn& output = query_.columns[static_cast<std::size_t>(index)];
    ResultColumn column{.name = output.name, .type = output.type};
    ValueSource value{.type = output.type};
    const auto origin =
        output.expression ? originOf(query_, *output.expression) : std::optional<Origin>();
    if (origin && !findRow(*origin, value)) {
      out_.sourceRows.push_back(origin->source->number);
      request_.rows.insert(index);
      findRow(*origin, value);
    }
    if (origin) {
      column.table = origin->table->identity();
      column.tableColumn = origin->table->identity(origin->column);
      column.sourceRow = value.sourceRow;
    } else {
      request_.columns.insert(index);
    }
    out_.columns.push_back(std::move(column));
    out_.values.push_back(value);
  }

  void addOrder(int index) {
    const BoundOrder& term = query_.orderBy[static_cast<std::size_t>(index)];
    OrderSource order{.value = {}, .descending = term.descending};
    if (term.expression) {
      order.value.type = term.expression->type;
      const auto origin = originOf(query_, *term.expression);
      if (!origin || !findRow(*origin, order.value)) request_.orderTerms.insert(index);
    }
    out_.order.push_back(order);
  }

  /// Finds the source row that holds a column; false where the result doesn't have it.
  bool findRow(const Origin& origin, ValueSource& value) const {
    const auto known = std::ranges::find(out_.sourceRows, origin.source->number);
    if (known == out_.sourceRows.end()) return false;
    value.table = origin.table;
    value.tableColumn = origin.column;
    value.sourceRow = static_cast<int>(known - out_.sourceRows.begin());
    return true;
  }

  WrittenStatement& out_;
  const BoundQuery& query_;
  Request request_{.ordered = false};
};

}  // namespace

WrittenStatement writeStatement(const BoundQuery& query) {
  WrittenStatement out;
  ResultPlanner(out, query).write();
  return out;
}

}  // namespace jetsql
