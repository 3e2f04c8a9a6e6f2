#include "platform/jetsql/Binder.h"

#include <algorithm>
#include <string>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/BinderDepth.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Function.h"

namespace jetsql {
namespace {

std::u16string decimalText(std::size_t number) {
  std::u16string text;
  for (const char c : std::to_string(number)) text += static_cast<char16_t>(c);
  return text;
}

/// A column of a source as an expression, already bound.
ExpressionPtr columnOf(Source& source, std::size_t column) {
  auto expression = std::make_unique<Expression>(Expression::Kind::Column);
  expression->path = {source.name, source.columns[column].name};
  expression->source = &source;
  expression->column = static_cast<int>(column);
  expression->type = source.columns[column].type;
  return expression;
}

}  // namespace

Binder::Binder(Catalog& catalog) : catalog_(catalog) {}

void Binder::bind(Query& query) {
  bindQuery(query, nullptr);
}

void Binder::bindQuery(Query& query, Scope* outer) {
  const Depth depth(*this);
  if (query.hasParameters) throw error::missingParameter();
  if (query.select) {
    bindSelect(query, outer);
  } else {
    bindUnion(query, outer);
  }
}

void Binder::bindUnion(Query& query, Scope* outer) {
  bindQuery(*query.left, outer);
  bindQuery(*query.right, outer);
  const auto& left = query.left->columns;
  const auto& right = query.right->columns;
  if (left.size() != right.size()) {
    throw error::statement(
        u"The number of columns in the two selected tables or queries of a union query do not "
        u"match.");
  }
  for (std::size_t i = 0; i < left.size(); ++i) {
    query.columns.push_back({left[i].name, commonType(left[i].type, right[i].type), nullptr});
  }
  for (OrderTerm& term : query.orderBy) {
    term.output = outputNamed(query, *term.expression);
    if (term.output >= 0) continue;
    throw error::statement(u"The ORDER BY expression (" + pathText(term.expression->path) +
                           u") includes fields that are not selected by the query.  Only those "
                           u"fields requested in the first query can be included in an ORDER BY "
                           u"expression.");
  }
}

void Binder::bindSelect(Query& query, Scope* outer) {
  Select& select = *query.select;
  Scope scope{&select, &query, outer, 0, false, nullptr};
  for (const auto& item : select.from) bindFrom(*item, scope);
  for (const auto& item : select.from) bindConditions(*item, scope);
  if (select.where) bindExpression(*select.where, scope, Place::Where);
  expandItems(query, scope);
  scope.visibleItems = query.columns.size();
  for (const auto& term : select.groupBy) bindExpression(*term, scope, Place::Where);
  if (select.having) bindExpression(*select.having, scope, Place::Plain);
  bindOrder(query, scope);
  select.grouped = scope.sawAggregate || !select.groupBy.empty() || select.having != nullptr;
  if (!select.grouped) return;
  for (const OutputColumn& column : query.columns) requireGrouped(*column.expression, select);
  if (select.having) requireGrouped(*select.having, select);
  for (const OrderTerm& term : query.orderBy) {
    if (term.output < 0) requireGrouped(*term.expression, select);
  }
}

std::unique_ptr<Source> Binder::newSource() {
  if (++sources_ > kMostSources) throw error::tooComplex();
  auto source = std::make_unique<Source>();
  source->number = sources_;
  return source;
}

void Binder::bindFrom(FromItem& item, Scope& scope) {
  const Depth depth(*this);
  if (item.isJoin()) {
    item.firstSource = scope.select->sources.size();
    bindFrom(*item.left, scope);
    bindFrom(*item.right, scope);
    item.sourcesEnd = scope.select->sources.size();
    return;
  }
  std::unique_ptr<Source> source = newSource();
  source->name = item.alias.empty() ? item.name : item.alias;
  if (item.query) {
    // A query in FROM sees nothing of what stands around it.
    bindQuery(*item.query, nullptr);
    source->query = std::move(item.query);
  } else {
    bindNamed(item, *source);
  }
  if (source->query) source->columns = source->query->columns;
  item.source = source.get();
  scope.select->sources.push_back(std::move(source));
}

void Binder::bindNamed(FromItem& item, Source& source) {
  CatalogEntry entry = catalog_.entry(item.name);
  if (const auto* table = std::get_if<const jet::Table*>(&entry)) {
    source.table = *table;
    for (const jet::Column& column : source.table->columns()) {
      source.columns.push_back({column.name, typeOf(column.type), nullptr});
    }
    return;
  }
  auto& saved = std::get<CatalogQuery>(entry);
  if (std::ranges::find(open_, saved.id) != open_.end()) {
    throw error::engine(u"Circular reference caused by '" + item.name + u"'.");
  }
  if (open_.size() >= kDeepestQueries) throw error::tooComplex();
  open_.push_back(saved.id);
  bindQuery(*saved.query, nullptr);
  open_.pop_back();
  source.query = std::move(saved.query);
}

void Binder::bindConditions(FromItem& item, Scope& scope) {
  if (!item.isJoin()) return;
  bindConditions(*item.left, scope);
  bindConditions(*item.right, scope);
  scope.join = &item;
  bindExpression(*item.condition, scope, Place::Where);
  scope.join = nullptr;
}

void Binder::expandItems(Query& query, Scope& scope) {
  std::vector<bool> aliased;
  for (SelectItem& item : query.select->items) {
    if (!item.expression) {
      expandAll(query, item);
      aliased.resize(query.columns.size(), false);
      continue;
    }
    scope.visibleItems = query.columns.size();
    bindExpression(*item.expression, scope, Place::Plain);
    aliased.push_back(!item.alias.empty());
    addOutput(query, *item.expression, item.alias);
  }
  nameOutputs(query, aliased);
}

void Binder::expandAll(Query& query, const SelectItem& item) {
  bool found = false;
  for (const auto& source : query.select->sources) {
    if (!item.qualifier.empty() && !jet::sameName(source->name, item.qualifier)) continue;
    found = true;
    for (std::size_t i = 0; i < source->columns.size(); ++i) {
      query.select->expanded.push_back(columnOf(*source, i));
      addOutput(query, *query.select->expanded.back(), {});
    }
  }
  if (found) return;
  if (item.qualifier.empty()) {
    throw error::statement(u"Query input must contain at least one table or query.");
  }
  throw error::missingObject(item.qualifier);
}

void Binder::addOutput(Query& query, const Expression& expression, std::u16string alias) {
  if (query.columns.size() >= 255) throw error::statement(u"Too many fields defined.");
  std::u16string name = std::move(alias);
  const Expression& column = meant(expression);
  if (name.empty() && column.kind == Expression::Kind::Column) {
    name = column.source->columns[static_cast<std::size_t>(column.column)].name;
  }
  if (name.empty()) name = u"Expr" + decimalText(1000 + query.columns.size());
  query.columns.push_back({std::move(name), expression.type, &expression});
}

/// Columns of one name are told apart by the tables that they come from.
void Binder::nameOutputs(Query& query, const std::vector<bool>& aliased) const {
  const std::vector<OutputColumn> before = query.columns;
  for (std::size_t i = 0; i < before.size(); ++i) {
    for (std::size_t j = 0; j < before.size(); ++j) {
      if (i == j || !jet::sameName(before[i].name, before[j].name)) continue;
      if (aliased[i] && aliased[j]) {
        throw error::statement(u"Duplicate output alias '" + before[i].name + u"'.");
      }
      const Expression& column = meant(*before[i].expression);
      if (!aliased[i] && column.kind == Expression::Kind::Column) {
        query.columns[i].name = column.source->name + u"." + before[i].name;
      }
      break;
    }
  }
}

void Binder::bindOrder(Query& query, Scope& scope) {
  for (OrderTerm& term : query.orderBy) {
    const Expression& written = *term.expression;
    if (written.kind == Expression::Kind::Number) {
      term.output = outputNamed(query, written);
      if (term.output < 0) throw error::clauseSyntax(u"ORDER BY clause");
      continue;
    }
    bindExpression(*term.expression, scope, Place::Plain);
    for (std::size_t i = 0; i < query.columns.size() && term.output < 0; ++i) {
      if (sameExpression(*query.columns[i].expression, *term.expression)) {
        term.output = static_cast<int>(i);
      }
    }
    if (query.select->distinct && term.output < 0) {
      throw error::statement(u"ORDER BY clause (" + pathText(written.path) +
                             u") conflicts with DISTINCT.");
    }
  }
}

/// The query's own column that an ORDER BY term numbers or names; -1 where it does neither.
int Binder::outputNamed(const Query& query, const Expression& term) const {
  const std::size_t count = query.columns.size();
  if (term.kind == Expression::Kind::Number) {
    const bool exists =
        term.type == Type::Long && term.number >= 1 && term.number <= static_cast<double>(count);
    return exists ? static_cast<int>(term.number) - 1 : -1;
  }
  if (term.kind != Expression::Kind::Column) return -1;
  for (std::size_t i = 0; i < count; ++i) {
    if (jet::sameName(query.columns[i].name, term.path.back())) return static_cast<int>(i);
  }
  return -1;
}

void Binder::requireGrouped(const Expression& expression, const Select& select) const {
  const Expression& whole = meant(expression);
  for (const auto& term : select.groupBy) {
    if (sameExpression(*term, whole)) return;
  }
  if (whole.function != nullptr && whole.function->isAggregate()) return;
  const bool isOurs = std::ranges::any_of(
      select.sources, [&](const auto& source) { return source.get() == whole.source; });
  if (whole.kind == Expression::Kind::Column && isOurs) {
    throw error::notGrouped(whole.path.back());
  }
  for (const auto& argument : whole.arguments) requireGrouped(*argument, select);
}

}  // namespace jetsql
