#pragma once

#include "platform/jetsql/binding/Scope.h"

namespace jetsql {

class QueryBinder;

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
  void requireAggregateAllowed(std::u16string_view function) const;

  QueryBinder& queries_;
  Scope& scope_;
  Clause clause_;
};

/// A column of a source as an expression; `written` is its name in the statement.
BoundPtr columnOf(const Source& source, std::size_t column, std::u16string written);

}  // namespace jetsql
