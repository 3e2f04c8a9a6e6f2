#include "platform/jetsql/binding/QueryBinder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/binding/SavedQuery.h"
#include "platform/jetsql/syntax/DepthGuard.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/Conversion.h"

namespace jetsql {
namespace {

constexpr std::size_t kMostColumns = 255;

void addOutput(BoundQuery& query, BoundPtr expression, std::u16string name) {
  if (query.columns.size() >= kMostColumns) throw error::tooManyColumns();
  if (name.empty() && expression->kind == ExpressionKind::Column) {
    name = expression->source->columns[static_cast<std::size_t>(expression->column)].name;
  }
  if (name.empty()) name = u"Expr" + runtime::toText(1000 + query.columns.size());
  const Type type = expression->type;
  query.columns.push_back({std::move(name), type, std::move(expression)});
}

/// The columns that `*` or `name.*` stands for.
void addAll(BoundQuery& query, std::u16string_view qualifier) {
  bool found = false;
  for (const auto& source : query.select->sources) {
    if (!qualifier.empty() && !jet::sameName(source->name, qualifier)) continue;
    found = true;
    for (std::size_t i = 0; i < source->columns.size(); ++i) {
      addOutput(query, columnOf(*source, i, source->columns[i].name), {});
    }
  }
  if (found) return;
  if (!qualifier.empty()) throw error::missingObject(qualifier);
  throw error::missingInput();
}

/// Renames columns with equal names to `table.column`. Raises the error for equal aliases.
void qualifyDuplicates(std::vector<OutputColumn>& columns, const std::vector<bool>& aliased) {
  const std::vector<OutputColumn> before = columns;
  for (std::size_t i = 0; i < before.size(); ++i) {
    for (std::size_t j = 0; j < before.size(); ++j) {
      if (i == j || !jet::sameName(before[i].name, before[j].name)) continue;
      if (aliased[i] && aliased[j]) {
        throw error::duplicateAlias(before[i].name);
      }
      const BoundExpression& column = *before[i].expression;
      if (!aliased[i] && column.kind == ExpressionKind::Column) {
        columns[i].name = column.source->name + u"." + before[i].name;
      }
      break;
    }
  }
}

/// The query's output column that an ORDER BY term refers to by number or name; -1 if it does
/// neither.
int outputNamed(const std::vector<OutputColumn>& columns, const ParsedExpression& term) {
  if (term.kind == ExpressionKind::Integer) {
    const bool exists = term.number >= 1 && term.number <= static_cast<double>(columns.size());
    return exists ? static_cast<int>(term.number) - 1 : -1;
  }
  if (term.kind != ExpressionKind::Column) return -1;
  const auto found = std::ranges::find_if(columns, [&](const OutputColumn& column) {
    return jet::sameName(column.name, term.path.back());
  });
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

void requireGrouped(const BoundQuery& query, const BoundSelect& select);

/// Raises the error for a column of `select` outside its groups and aggregates.
void requireGrouped(const BoundExpression& expression, const BoundSelect& select) {
  for (const BoundPtr& term : select.groupBy) {
    if (sameExpression(*term, expression)) return;
  }
  if (expression.function != nullptr && expression.function->isAggregate()) return;
  const bool isOwn = std::ranges::any_of(
      select.sources, [&](const auto& source) { return source.get() == expression.source; });
  if (isOwn) throw error::notGrouped(expression.text);
  for (const BoundPtr& argument : expression.arguments) requireGrouped(*argument, select);
  if (expression.query) requireGrouped(*expression.query, select);
}

void requireGrouped(const BoundFrom& item, const BoundSelect& select) {
  if (item.condition) requireGrouped(*item.condition, select);
  for (const BoundFrom& side : item.sides) requireGrouped(side, select);
}

/// The same for all expressions of a query within an expression.
void requireGrouped(const BoundQuery& query, const BoundSelect& select) {
  std::vector<BoundPtr> expressions;
  for (const OutputColumn& column : query.columns) expressions.push_back(column.expression);
  for (const BoundOrder& term : query.orderBy) expressions.push_back(term.expression);
  for (const auto& side : {query.left, query.right}) {
    if (side) requireGrouped(*side, select);
  }
  if (query.select) {
    for (const BoundFrom& item : query.select->from) requireGrouped(item, select);
    expressions.insert(expressions.end(), query.select->groupBy.begin(),
                       query.select->groupBy.end());
    expressions.insert(expressions.end(), {query.select->where, query.select->having});
  }
  for (const BoundPtr& expression : expressions) {
    if (expression) requireGrouped(*expression, select);
  }
}

}  // namespace

std::shared_ptr<const BoundQuery> QueryBinder::bindWithin(const ParsedQuery& query, Scope& around) {
  return std::make_shared<const BoundQuery>(bindQuery(query, &around, around.open));
}

BoundQuery QueryBinder::bindQuery(const ParsedQuery& query, Scope* outer, const OpenQuery* open) {
  const DepthGuard depth(depth_, kDeepestBinding);
  if (query.hasParameters) throw error::missingParameter();
  BoundQuery made;
  if (query.select) {
    bindSelect(query, made, outer, open);
  } else {
    bindUnion(query, made, outer, open);
  }
  return made;
}

void QueryBinder::bindUnion(const ParsedQuery& query, BoundQuery& made, Scope* outer,
                            const OpenQuery* open) {
  made.all = query.all;
  made.left = std::make_shared<const BoundQuery>(bindQuery(*query.left, outer, open));
  made.right = std::make_shared<const BoundQuery>(bindQuery(*query.right, outer, open));
  const auto& left = made.left->columns;
  const auto& right = made.right->columns;
  if (left.size() != right.size()) {
    throw error::unequalUnion();
  }
  for (std::size_t i = 0; i < left.size(); ++i) {
    made.columns.push_back({left[i].name, commonType(left[i].type, right[i].type), nullptr});
  }
  for (const ParsedOrder& term : query.orderBy) {
    const int output = outputNamed(made.columns, term.expression);
    if (output < 0) {
      throw error::orderNotInUnion(pathText(term.expression.path));
    }
    made.orderBy.push_back({nullptr, output, term.descending});
  }
}

void QueryBinder::bindSelect(const ParsedQuery& query, BoundQuery& made, Scope* outer,
                             const OpenQuery* open) {
  const ParsedSelect& parsed = *query.select;
  BoundSelect& select = made.select.emplace();
  select.distinct = parsed.distinct;
  select.distinctRow = parsed.distinctRow;
  select.top = parsed.top;
  Scope scope{made, outer, open};
  const ExpressionBinder where(*this, scope, Clause::Where);
  const ExpressionBinder plain(*this, scope);
  for (const ParsedFrom& item : parsed.from) select.from.push_back(bindFrom(item, select, open));
  for (std::size_t i = 0; i < parsed.from.size(); ++i) {
    bindConditions(parsed.from[i], select.from[i], scope);
  }
  if (parsed.where) select.where = where.bind(*parsed.where);
  bindItems(parsed, made, scope);
  for (const ParsedExpression& term : parsed.groupBy) select.groupBy.push_back(where.bind(term));
  if (parsed.having) select.having = plain.bind(*parsed.having);
  bindOrder(query, made, scope);
  select.grouped = scope.sawAggregate || !select.groupBy.empty() || select.having != nullptr;
  if (!select.grouped) return;
  for (const OutputColumn& column : made.columns) requireGrouped(*column.expression, select);
  if (select.having) requireGrouped(*select.having, select);
  for (const BoundOrder& term : made.orderBy) {
    if (term.expression) requireGrouped(*term.expression, select);
  }
}

BoundFrom QueryBinder::bindFrom(const ParsedFrom& item, BoundSelect& select,
                                const OpenQuery* open) {
  const DepthGuard depth(depth_, kDeepestBinding);
  BoundFrom made;
  made.join = item.join;
  for (const ParsedFrom& side : item.sides) made.sides.push_back(bindFrom(side, select, open));
  if (item.isJoin()) return made;
  if (++sources_ > kMostSources) throw error::tooComplex();
  auto source = std::make_unique<Source>();
  source->number = sources_;
  source->name = item.alias.empty() ? item.name : item.alias;
  if (item.query) {
    // A query in FROM sees no names of the query around it.
    source->query = std::make_shared<const BoundQuery>(bindQuery(*item.query, nullptr, open));
  } else {
    bindNamed(item, *source, open);
  }
  if (source->query) {
    for (const OutputColumn& column : source->query->columns) {
      source->columns.push_back({column.name, column.type});
    }
  }
  made.source = source.get();
  select.sources.push_back(std::move(source));
  return made;
}

void QueryBinder::bindNamed(const ParsedFrom& item, Source& source, const OpenQuery* open) {
  const auto object = database_.find(item.name);
  if (!object) throw error::missingObject(item.name);
  if (object->kind == jet::ObjectKind::LinkedTable) throw error::linkedTable(object->name);
  if (object->kind == jet::ObjectKind::Table) {
    source.table = &database_.table(*object);
    for (const jet::ColumnDefinition& column : source.table->columns()) {
      source.columns.push_back({column.name, typeOf(column.type)});
    }
    return;
  }
  const ParsedQuery saved = queryFromRows(object->name, database_.queryRows(*object));
  for (const OpenQuery* each = open; each != nullptr; each = each->outer) {
    if (each->id == object->id) throw error::circularReference(item.name);
  }
  const OpenQuery inner{object->id, open == nullptr ? 1 : open->depth + 1, open};
  if (inner.depth > kDeepestQueries) throw error::tooComplex();
  source.query = std::make_shared<const BoundQuery>(bindQuery(saved, nullptr, &inner));
}

void QueryBinder::bindConditions(const ParsedFrom& item, BoundFrom& made, Scope& scope) {
  if (!item.isJoin()) return;
  for (std::size_t i = 0; i < item.sides.size(); ++i) {
    bindConditions(item.sides[i], made.sides[i], scope);
  }
  Scope within{scope.query, scope.outer, scope.open, &made};
  made.condition = ExpressionBinder(*this, within, Clause::Where).bind(*item.condition);
}

void QueryBinder::bindItems(const ParsedSelect& select, BoundQuery& made, Scope& scope) {
  const ExpressionBinder binder(*this, scope);
  std::vector<bool> aliased;
  for (const ParsedItem& item : select.items) {
    if (item.expression) {
      addOutput(made, binder.bind(*item.expression), item.alias);
    } else {
      addAll(made, item.qualifier);
    }
    aliased.resize(made.columns.size(), !item.alias.empty());
  }
  qualifyDuplicates(made.columns, aliased);
}

void QueryBinder::bindOrder(const ParsedQuery& query, BoundQuery& made, Scope& scope) {
  const ExpressionBinder binder(*this, scope);
  for (const ParsedOrder& term : query.orderBy) {
    const ExpressionKind kind = term.expression.kind;
    if (kind == ExpressionKind::Integer || kind == ExpressionKind::Number) {
      const int output = outputNamed(made.columns, term.expression);
      if (output < 0) throw error::clauseSyntax(u"ORDER BY clause");
      made.orderBy.push_back({nullptr, output, term.descending});
      continue;
    }
    BoundPtr expression = binder.bind(term.expression);
    const auto same = std::ranges::find_if(made.columns, [&](const OutputColumn& column) {
      return sameExpression(*column.expression, *expression);
    });
    if (same != made.columns.end()) {
      const int output = static_cast<int>(same - made.columns.begin());
      made.orderBy.push_back({nullptr, output, term.descending});
      continue;
    }
    if (made.select->distinct) {
      throw error::orderNotDistinct(pathText(term.expression.path));
    }
    made.orderBy.push_back({std::move(expression), -1, term.descending});
  }
}

}  // namespace jetsql
