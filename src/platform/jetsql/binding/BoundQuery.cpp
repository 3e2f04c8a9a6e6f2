#include "platform/jetsql/binding/BoundQuery.h"

namespace jetsql {

std::optional<Origin> originOf(const BoundExpression& expression) {
  if (expression.kind != ExpressionKind::Column) return std::nullopt;
  const Source& source = *expression.source;
  if (source.table != nullptr)
    return Origin{source.table, jet::ColumnIndex(expression.column), &source};
  const BoundPtr& inner =
      source.query->columns[static_cast<std::size_t>(expression.column)].expression;
  return inner ? originOf(*source.query, *inner) : std::nullopt;
}

std::optional<Origin> originOf(const BoundQuery& query, const BoundExpression& expression) {
  if (!query.select || query.select->grouped || query.select->distinct) return std::nullopt;
  return originOf(expression);
}

}  // namespace jetsql
