#pragma once

#include "platform/jetsql/binding/BoundQuery.h"

namespace jetsql {

class QueryBinder;

/// A saved query that is being bound, linked to the saved query that names it.
struct OpenQuery {
  jet::ObjectId id;
  int depth = 1;
  const OpenQuery* outer = nullptr;
};

/// A query that is being bound, whose names are visible, and the query around it.
struct Scope {
  /// Its sources, and the columns bound so far, whose aliases can be used.
  const BoundQuery& query;
  Scope* outer = nullptr;
  const OpenQuery* open = nullptr;
  /// The join whose condition is bound: it sees its own tables only.
  const BoundFrom* join = nullptr;
  bool sawAggregate = false;
};

/// The clause that an expression belongs to, as far as it restricts the expression.
enum class Clause : std::uint8_t { Plain, Where, InAggregate };

/// Resolves the names in an expression and finds its type. Raises the engine's errors for unknown
/// or ambiguous names, and for functions that don't exist or are called wrongly.
class ExpressionBinder {
 public:
  /// `queries` binds the queries within the expression.
  ExpressionBinder(QueryBinder& queries, Scope& scope, Clause clause = Clause::Plain)
      : queries_(queries), scope_(scope), clause_(clause) {}

  BoundPtr bind(const ParsedExpression& expression) const;

 private:
  BoundPtr bindColumn(const ParsedExpression& expression) const;
  BoundPtr findColumn(const ParsedExpression& expression, const Scope& scope) const;
  BoundPtr searchColumn(const ParsedExpression& expression, const Scope& scope,
                        std::u16string_view table, std::u16string_view column) const;
  BoundPtr bindCall(const ParsedExpression& expression) const;
  /// Raises the error for an aggregate, or the name of a column with one, in a clause without them.
  void requireAggregatesAllowed(std::u16string_view name) const;

  QueryBinder& queries_;
  Scope& scope_;
  Clause clause_;
};

/// A column of a source as an expression; `written` is its name in the statement.
BoundPtr columnOf(const Source& source, std::size_t column, std::u16string written);

}  // namespace jetsql
