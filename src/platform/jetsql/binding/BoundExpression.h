#pragma once

#include <memory>
#include <set>
#include <vector>

#include "platform/jetsql/functions/Function.h"
#include "platform/jetsql/functions/Type.h"
#include "platform/jetsql/syntax/ParsedExpression.h"

namespace jetsql {

struct BoundExpression;
struct BoundQuery;
struct Source;
/// Shared, since an alias refers to the expression of its entry in the SELECT list.
using BoundPtr = std::shared_ptr<const BoundExpression>;

/// One node of an expression with its names resolved and the type of its value.
struct BoundExpression : ExpressionNode {
  Type type = Type::Null;
  const Source* source = nullptr;  ///< of a column
  int column = 0;                  ///< index among the source's columns
  const Function* function = nullptr;
  bool hasAggregate = false;  ///< it or one of its arguments, but not a query within it
  std::vector<BoundPtr> arguments = {};
  std::shared_ptr<const BoundQuery> query = {};
};

/// The sources whose columns an expression uses, and whether it has a query, which may use any.
struct SourceUse {
  std::set<const Source*> sources = {};
  bool hasQuery = false;
};
SourceUse sourcesOf(const BoundExpression& expression);

/// True when two expressions are equal; one that contains a query equals only itself.
bool sameExpression(const BoundExpression& a, const BoundExpression& b);

}  // namespace jetsql
