#include "platform/jetsql/writing/QueryWriter.h"

#include <algorithm>
#include <cmath>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/writing/ExpressionWriter.h"
#include "platform/jetsql/writing/FromWriter.h"

namespace jetsql {
namespace {

std::string named(const std::string& expression, char prefix, int index) {
  return expression + " AS " + prefix + std::to_string(index);
}

std::string numbered(char prefix, int index) {
  return prefix + std::to_string(index);
}

std::string integerText(double number) {
  return std::to_string(std::llround(number));
}

const BoundExpression& orderedBy(const BoundQuery& query, const BoundOrder& term) {
  return term.expression ? *term.expression
                         : *query.columns[static_cast<std::size_t>(term.output)].expression;
}

/// DISTINCTROW has an effect where the query has tables from which no column comes: each row of the
/// other tables then counts once. Returns the ids of those rows; none where it has no effect.
std::vector<std::string> distinctRows(StatementWriter& writer, const BoundQuery& query) {
  std::set<const Source*> shown;
  for (const OutputColumn& column : query.columns) {
    shown.merge(sourcesOf(*column.expression).sources);
  }
  const auto& sources = query.select->sources;
  const auto isShown = [&](const auto& source) { return shown.contains(source.get()); };
  const bool areTables = std::ranges::all_of(
      sources, [&](const auto& source) { return !isShown(source) || source->table != nullptr; });
  std::vector<std::string> rows;
  if (!areTables || std::ranges::all_of(sources, isShown)) return rows;
  for (const auto& source : sources) {
    if (isShown(source)) rows.push_back(writer.rowId(*source, 0));
  }
  return rows;
}

/// Writes one SELECT.
class SelectWriter {
 public:
  SelectWriter(StatementWriter& writer, const BoundQuery& query, const Request& request)
      : writer_(writer),
        expressions_(writer),
        query_(query),
        select_(*query.select),
        request_(request),
        isRanked_(select_.top && (select_.top->percent || !query.orderBy.empty())) {}

  std::string write() {
    std::string text = select_.distinct ? "SELECT DISTINCT " : "SELECT ";
    text += outputs();
    std::vector<std::string> order = orderTexts();
    const std::string clauses = clausesAfterFrom();
    text += writeFrom(writer_, select_) + clauses;
    if (isRanked_) return ranked(text);
    if (select_.top) text += " LIMIT " + integerText(select_.top->count);
    if (select_.top || !request_.ordered || order.empty()) return text;
    return text + " ORDER BY " + joined(order, ", ");
  }

 private:
  std::string outputs() {
    std::vector<std::string> outputs;
    for (const int row : request_.rows) {
      const BoundExpression& column = *query_.columns[static_cast<std::size_t>(row)].expression;
      outputs.push_back(named(writer_.rowId(*column.source, column.column), 'r', row));
    }
    for (int i = 0; i < static_cast<int>(query_.columns.size()); ++i) {
      const BoundExpression& column = *query_.columns[static_cast<std::size_t>(i)].expression;
      if (!select_.distinct && !request_.columns.contains(i)) continue;
      std::string value =
          select_.distinct ? expressions_.compared(column) : expressions_.value(column);
      if (isOneGroup()) value.insert(0, "CASE WHEN count(*) >= 0 THEN ").append(" END");
      outputs.push_back(named(value, 'c', i));
    }
    for (int i = 0; i < static_cast<int>(query_.orderBy.size()); ++i) {
      const BoundOrder& term = query_.orderBy[static_cast<std::size_t>(i)];
      if (!isRanked_ && !request_.orderTerms.contains(i)) continue;
      outputs.push_back(named(expressions_.compared(orderedBy(query_, term)), 'o', i));
    }
    if (outputs.empty()) return isOneGroup() ? "count(*) AS c" : "1 AS c";
    return joined(outputs, ", ");
  }

  std::vector<std::string> orderTexts() {
    std::vector<std::string> order;
    if (isRanked_ || !request_.ordered) return order;
    for (const BoundOrder& term : query_.orderBy) {
      order.push_back(expressions_.sorted(orderedBy(query_, term)) +
                      (term.descending ? " DESC" : ""));
    }
    return order;
  }

  std::string clausesAfterFrom() {
    std::string text;
    if (select_.where) text += " WHERE " + expressions_.condition(*select_.where);
    std::vector<std::string> groups;
    for (const BoundPtr& term : select_.groupBy) groups.push_back(expressions_.sorted(*term));
    if (select_.distinctRow && !select_.distinct && !select_.grouped) {
      groups = distinctRows(writer_, query_);
    }
    if (!groups.empty()) text += " GROUP BY " + joined(groups, ", ");
    if (!select_.having) return text;
    return text + " HAVING " + expressions_.condition(*select_.having);
  }

  /// True where HAVING without GROUP BY makes one group of all rows, even if there are none. SQLite
  /// accepts such a HAVING only where an output has an aggregate.
  bool isOneGroup() const { return select_.having && select_.groupBy.empty(); }

  /// The first rows in the order, with all rows that are equal to the last of them.
  std::string ranked(const std::string& rows) {
    std::vector<std::string> outputs;
    for (const int row : request_.rows) outputs.push_back(numbered('r', row));
    for (const int column : request_.columns) outputs.push_back(numbered('c', column));
    for (const int term : request_.orderTerms) outputs.push_back(numbered('o', term));
    std::vector<std::string> order;
    for (int i = 0; i < static_cast<int>(query_.orderBy.size()); ++i) {
      const BoundOrder& term = query_.orderBy[static_cast<std::size_t>(i)];
      order.push_back(collated(numbered('o', i), orderedBy(query_, term).type) +
                      (term.descending ? " DESC" : ""));
    }
    const std::string by = joined(order, ", ");
    std::string text =
        "SELECT " + (outputs.empty() ? "1 AS c" : joined(outputs, ", ")) + " FROM (SELECT *, " +
        (by.empty() ? "row_number() OVER ()" : "rank() OVER (ORDER BY " + by + ")") +
        " AS position, count(*) OVER () AS total FROM (" + rows + ")) WHERE position <= ";
    const std::string count = integerText(select_.top->count);
    // The share is rounded up, so that one percent of few rows is not zero rows.
    text += select_.top->percent ? "(" + count + " * total + 99) / 100" : count;
    return request_.ordered && !by.empty() ? text + " ORDER BY " + by : text;
  }

  StatementWriter& writer_;
  ExpressionWriter expressions_;
  const BoundQuery& query_;
  const BoundSelect& select_;
  const Request& request_;
  bool isRanked_;  ///< TOP counts rows by their order, or a share of them
};

/// One side of a union, with all of its columns as the union has them.
std::string sideText(StatementWriter& writer, const BoundQuery& side, const BoundQuery& query) {
  Request all{.ordered = false};
  std::vector<std::string> columns;
  for (int i = 0; i < static_cast<int>(query.columns.size()); ++i) {
    const auto index = static_cast<std::size_t>(i);
    all.columns.insert(i);
    columns.push_back(named(
        converted(numbered('c', i), side.columns[index].type, query.columns[index].type), 'c', i));
  }
  return "SELECT " + joined(columns, ", ") + " FROM (" + writeQuery(writer, side, all) + ")";
}

/// A union has all of its columns, whichever are requested.
std::string unionText(StatementWriter& writer, const BoundQuery& query, const Request& request) {
  std::vector<std::string> columns;
  for (int i = 0; i < static_cast<int>(query.columns.size()); ++i) {
    const Type type = query.columns[static_cast<std::size_t>(i)].type;
    columns.push_back(named(collated(numbered('c', i), type), 'c', i));
  }
  std::string text = sideText(writer, *query.left, query);
  text += " UNION ALL " + sideText(writer, *query.right, query);
  text =
      (query.all ? "SELECT " : "SELECT DISTINCT ") + joined(columns, ", ") + " FROM (" + text + ")";
  if (!request.ordered || query.orderBy.empty()) return text;
  std::vector<std::string> order;
  for (const BoundOrder& term : query.orderBy) {
    const Type type = query.columns[static_cast<std::size_t>(term.output)].type;
    order.push_back(collated(numbered('c', term.output), type) + (term.descending ? " DESC" : ""));
  }
  return text + " ORDER BY " + joined(order, ", ");
}

}  // namespace

std::string writeQuery(StatementWriter& writer, const BoundQuery& query, const Request& request) {
  return query.select ? SelectWriter(writer, query, request).write()
                      : unionText(writer, query, request);
}

}  // namespace jetsql
