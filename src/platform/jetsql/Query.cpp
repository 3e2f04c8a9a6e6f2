#include "platform/jetsql/Query.h"

namespace jetsql {

FromItem::FromItem() = default;
FromItem::~FromItem() = default;

std::optional<Origin> originOf(const Source& source, int column) {
  if (source.table != nullptr) return Origin{source.table, column, &source};
  return originOf(*source.query, column);
}

std::optional<Origin> originOf(const Query& query, int place) {
  if (!query.select || query.select->grouped || query.select->distinct) return std::nullopt;
  const Expression* expression = query.columns[static_cast<std::size_t>(place)].expression;
  if (expression == nullptr) return std::nullopt;
  const Expression& column = meant(*expression);
  if (column.kind != Expression::Kind::Column) return std::nullopt;
  return originOf(*column.source, column.column);
}

}  // namespace jetsql
