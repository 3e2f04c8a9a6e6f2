#include <algorithm>
#include <cmath>

#include "platform/jetsql/SqlWriter.h"

namespace jetsql {
namespace {

std::string join(const std::vector<std::string>& pieces) {
  std::string whole;
  for (const std::string& piece : pieces) {
    if (!whole.empty()) whole += ", ";
    whole += piece;
  }
  return whole;
}

/// "expression AS <prefix>0, …".
std::string named(const std::vector<std::string>& expressions, std::string_view prefix) {
  std::vector<std::string> pieces;
  for (std::size_t i = 0; i < expressions.size(); ++i) {
    pieces.push_back(expressions[i] + " AS " + std::string(prefix) + std::to_string(i));
  }
  return join(pieces);
}

std::string columnName(std::string_view source, std::string_view prefix, std::size_t number) {
  return std::string(source) + "." + std::string(prefix) + std::to_string(number);
}

std::string wholeText(double number) {
  return std::to_string(std::llround(number));
}

std::vector<std::string> columnNames(std::string_view source, std::string_view prefix,
                                     std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < count; ++i) names.push_back(columnName(source, prefix, i));
  return names;
}

}  // namespace

std::string SqlWriter::query(Query& query, const std::vector<Demand>& wanted) {
  const Select* outer = grouping_;
  std::string whole;
  if (!query.select) {
    grouping_ = nullptr;
    whole = finish(unionStage(query, wanted));
  } else {
    grouping_ = query.select->grouped ? query.select.get() : nullptr;
    std::vector<std::string> keys;
    Stage stage = selectStage(query, wanted, keys);
    if (!keys.empty()) stage = distinctStage(std::move(stage), keys);
    if (query.select->top) stage = topStage(std::move(stage), *query.select->top);
    whole = finish(stage);
  }
  grouping_ = outer;
  checkLength(whole.size());
  return whole;
}

/// The SELECT itself. `keys` comes back with what its rows are to be distinct by, if they are.
SqlWriter::Stage SqlWriter::selectStage(Query& query, const std::vector<Demand>& wanted,
                                        std::vector<std::string>& keys) {
  Select& select = *query.select;
  for (const auto& item : select.from) prepareJoins(*item, nullptr);
  Stage stage;
  for (const Demand& demand : wanted) {
    const OutputColumn& column = query.columns[static_cast<std::size_t>(demand.column)];
    stage.outputs.push_back(form(*column.expression, demand.form, demand.part));
  }
  if (select.distinct) {
    for (const OutputColumn& column : query.columns) keys.push_back(key(*column.expression));
  } else if (select.distinctRow && !select.grouped) {
    keys = distinctRowKeys(select);
  }
  addOrder(query, stage, keys);
  std::string tail;
  if (select.where) {
    const Select* grouping = std::exchange(grouping_, nullptr);
    tail += " WHERE " + condition(*select.where);
    grouping_ = grouping;
  }
  if (!select.groupBy.empty()) {
    std::vector<std::string> terms;
    for (const auto& term : select.groupBy) terms.push_back(key(*term));
    tail += " GROUP BY " + join(terms);
  }
  if (select.having) {
    // SQLite wants a group where HAVING stands alone.
    if (select.groupBy.empty()) tail += " GROUP BY NULL";
    tail += " HAVING " + condition(*select.having);
  }
  stage.tail = fromText(select) + tail;
  return stage;
}

void SqlWriter::addOrder(const Query& query, Stage& stage, const std::vector<std::string>& keys) {
  for (const OrderTerm& term : query.orderBy) {
    const bool isKey = query.select->distinct && term.output >= 0;
    const Expression& expression =
        term.output >= 0 ? *query.columns[static_cast<std::size_t>(term.output)].expression
                         : *term.expression;
    stage.order.emplace_back(isKey ? keys[static_cast<std::size_t>(term.output)] : key(expression),
                             term.descending);
  }
  if (!stage.order.empty() && keys.empty() && !query.select->grouped) stage.ties = rowKeys(query);
}

/// What settles the order of rows that are otherwise equal: the primary key of the table that the
/// first ordered column comes from, or else of the first table.
std::vector<std::string> SqlWriter::rowKeys(const Query& query) {
  const OrderTerm& first = query.orderBy.front();
  const Expression* ordered = first.output >= 0
                                  ? query.columns[static_cast<std::size_t>(first.output)].expression
                                  : first.expression.get();
  const Expression& column = meant(*ordered);
  Source* source = nullptr;
  int place = 0;
  if (column.kind == Expression::Kind::Column) {
    source = column.source;
    place = column.column;
  } else if (!query.select->sources.empty()) {
    source = query.select->sources.front().get();
  }
  if (source == nullptr || source->columns.empty()) return {};
  const auto origin = originOf(*source, place);
  std::vector<std::string> keys;
  if (!origin) return keys;
  const auto count = static_cast<int>(origin->table->primaryKey().size());
  for (int part = 0; part < count; ++part) {
    keys.push_back(reference(*source, {place, Form::RowKey, part}));
  }
  return keys;
}

/// DISTINCTROW matters where tables take part that give no column: a row of the others then counts
/// once.
std::vector<std::string> SqlWriter::distinctRowKeys(const Select& select) {
  std::vector<const Source*> giving;
  const auto note = [&](const Expression& expression, const auto& again) -> void {
    const Expression& whole = meant(expression);
    if (whole.source != nullptr && std::ranges::find(giving, whole.source) == giving.end()) {
      giving.push_back(whole.source);
    }
    for (const auto& argument : whole.arguments) again(*argument, again);
  };
  for (const SelectItem& item : select.items) {
    if (item.expression) note(*item.expression, note);
  }
  for (const auto& column : select.expanded) note(*column, note);
  std::vector<std::string> keys;
  bool leavesOut = false;
  for (const auto& source : select.sources) {
    if (std::ranges::find(giving, source.get()) == giving.end()) {
      leavesOut = true;
    } else if (source->table == nullptr) {
      return {};
    } else {
      keys.push_back(reference(*source, {0, Form::RowId, 0}));
    }
  }
  return leavesOut ? keys : std::vector<std::string>();
}

SqlWriter::Stage SqlWriter::unionStage(Query& query, const std::vector<Demand>& wanted) {
  std::vector<Demand> asked = wanted;
  const auto place = [&](int column) {
    const Demand demand{column, Form::Key, 0};
    const auto found = std::ranges::find(asked, demand);
    if (found != asked.end()) return static_cast<std::size_t>(found - asked.begin());
    asked.push_back(demand);
    return asked.size() - 1;
  };
  std::vector<std::size_t> keys;
  std::vector<std::size_t> order;
  if (!query.all) {
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
      keys.push_back(place(static_cast<int>(i)));
    }
  }
  for (const OrderTerm& term : query.orderBy) order.push_back(place(term.output));

  const std::string name = "u" + std::to_string(fresh());
  Stage stage;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    stage.outputs.push_back(columnName(name, "c", i));
  }
  for (std::size_t i = 0; i < order.size(); ++i) {
    stage.order.emplace_back(columnName(name, "c", order[i]), query.orderBy[i].descending);
  }
  std::string rows = "SELECT * FROM (" + unionArm(*query.left, query, asked) + ")";
  rows += " UNION ALL SELECT * FROM (" + unionArm(*query.right, query, asked) + ")";
  stage.tail = " FROM (" + rows + ") AS " + name;
  if (keys.empty()) return stage;

  std::vector<std::string> distinct;
  distinct.reserve(keys.size());
  for (const std::size_t each : keys) distinct.push_back(columnName(name, "c", each));
  return distinctStage(std::move(stage), distinct);
}

/// One half of a union, whose columns take the types of the whole.
std::string SqlWriter::unionArm(Query& arm, const Query& whole, const std::vector<Demand>& wanted) {
  std::vector<Demand> asked = wanted;
  std::vector<std::string> converted;
  bool isConverted = false;
  const std::string name = "u" + std::to_string(fresh());
  for (std::size_t i = 0; i < asked.size(); ++i) {
    const auto column = static_cast<std::size_t>(asked[i].column);
    converted.push_back(columnName(name, "c", i));
    if (asked[i].form != Form::Exact || arm.columns[column].type == whole.columns[column].type) {
      continue;
    }
    asked[i].form = Form::Value;
    if (whole.columns[column].type != Type::Currency) continue;
    converted.back() = call("jet_exact_currency", {converted.back()});
    isConverted = true;
  }
  std::string rows = query(arm, asked);
  if (!isConverted) return rows;
  return "SELECT " + named(converted, "c") + " FROM (" + rows + ") AS " + name;
}

SqlWriter::Stage SqlWriter::distinctStage(Stage inner, const std::vector<std::string>& keys) {
  const std::string name = "d" + std::to_string(fresh());
  Stage stage;
  std::vector<std::string> columns{named(keys, "k")};
  for (const std::string& column : columnNames(name, "c", inner.outputs.size())) {
    stage.outputs.push_back(call("jet_any", {column}));
  }
  if (!inner.outputs.empty()) columns.push_back(named(inner.outputs, "c"));
  for (std::size_t i = 0; i < inner.order.size(); ++i) {
    const auto key = std::ranges::find(keys, inner.order[i].first);
    if (key != keys.end()) {
      const auto place = static_cast<std::size_t>(key - keys.begin());
      stage.order.emplace_back(columnName(name, "k", place), inner.order[i].second);
      continue;
    }
    columns.push_back(inner.order[i].first + " AS o" + std::to_string(i));
    stage.order.emplace_back(call("jet_any", {columnName(name, "o", i)}), inner.order[i].second);
  }
  stage.tail = " FROM (SELECT " + join(columns) + inner.tail + ") AS " + name + " GROUP BY " +
               join(columnNames(name, "k", keys.size()));
  return stage;
}

/// The first rows of the order, with all that are equal to the last of them.
SqlWriter::Stage SqlWriter::topStage(Stage inner, const Top& top) {
  if (inner.order.empty() && !top.percent) {
    inner.tail += " LIMIT " + wholeText(top.count);
    return inner;
  }
  const std::string name = "w" + std::to_string(fresh());
  Stage stage;
  std::vector<std::string> columns;
  if (!inner.outputs.empty()) columns.push_back(named(inner.outputs, "c"));
  stage.outputs = columnNames(name, "c", inner.outputs.size());
  for (std::size_t i = 0; i < inner.order.size(); ++i) {
    columns.push_back(inner.order[i].first + " AS o" + std::to_string(i));
    stage.order.emplace_back(columnName(name, "o", i), inner.order[i].second);
  }
  if (!inner.ties.empty()) columns.push_back(named(inner.ties, "r"));
  stage.ties = columnNames(name, "r", inner.ties.size());
  columns.push_back((inner.order.empty()
                         ? "row_number() OVER ()"
                         : "rank() OVER (ORDER BY" + orderText(inner, false) + ")") +
                    std::string(" AS place"));
  std::string limit = wholeText(top.count);
  if (top.percent) {
    columns.emplace_back("count(*) OVER () AS total");
    // The share rounds up, so that a percent of few rows is not nothing.
    limit = "(" + limit + " * " + name + ".total + 99) / 100";
  }
  stage.tail = " FROM (SELECT " + join(columns) + inner.tail + ") AS " + name + " WHERE " + name +
               ".place <= " + limit;
  return stage;
}

std::string SqlWriter::finish(const Stage& stage) const {
  std::string whole = "SELECT ";
  whole += stage.outputs.empty() ? "1 AS c0" : named(stage.outputs, "c");
  // A row limit stands behind the order; it comes only where there is none.
  whole += stage.tail;
  if (!stage.order.empty()) whole += " ORDER BY" + orderText(stage, true);
  return whole;
}

std::string SqlWriter::orderText(const Stage& stage, bool withTies) const {
  std::string text;
  std::vector<std::string> seen;
  const auto add = [&](const std::string& expression, bool descending) {
    if (std::ranges::find(seen, expression) != seen.end()) return;
    if (!seen.empty()) text += ",";
    seen.push_back(expression);
    // A bare number or parameter would be taken for a column's place.
    const bool isPlain = expression.find_first_of("(.") != std::string::npos;
    text += " " + (isPlain ? expression : "(" + expression + "+0)") + (descending ? " DESC" : "");
  };
  for (const auto& [expression, descending] : stage.order) add(expression, descending);
  if (withTies) {
    for (const std::string& tie : stage.ties) add(tie, false);
  }
  return text;
}

}  // namespace jetsql
