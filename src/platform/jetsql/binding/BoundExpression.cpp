#include "platform/jetsql/binding/BoundExpression.h"

#include <algorithm>

namespace jetsql {

SourceUse sourcesOf(const BoundExpression& expression) {
  SourceUse use{.hasQuery = expression.query != nullptr};
  if (expression.source != nullptr) use.sources.insert(expression.source);
  for (const BoundPtr& argument : expression.arguments) {
    SourceUse inner = sourcesOf(*argument);
    use.sources.merge(inner.sources);
    use.hasQuery = use.hasQuery || inner.hasQuery;
  }
  return use;
}

bool sameExpression(const BoundExpression& a, const BoundExpression& b) {
  if (&a == &b) return true;
  if (a.kind != b.kind || a.op != b.op || a.negated != b.negated || a.query || b.query ||
      a.function != b.function) {
    return false;
  }
  if (a.kind == ExpressionKind::Column) return a.source == b.source && a.column == b.column;
  return a.number == b.number && a.text == b.text &&
         std::ranges::equal(a.arguments, b.arguments, [](const BoundPtr& x, const BoundPtr& y) {
           return sameExpression(*x, *y);
         });
}

}  // namespace jetsql
