#include "platform/jetsql/Translation.h"

#include <algorithm>

#include "platform/jetsql/SqlWriter.h"

namespace jetsql {

Translation translate(Query& query, jet::TextOrder order) {
  Translation out;
  std::vector<Demand> wanted;
  for (std::size_t i = 0; i < query.columns.size(); ++i) {
    const auto column = static_cast<int>(i);
    wanted.push_back({column, Form::Exact, 0});
    out.columns.push_back(
        {query.columns[i].name, query.columns[i].type, originOf(query, column), -1});
  }
  for (std::size_t i = 0; i < out.columns.size(); ++i) {
    ResultColumn& column = out.columns[i];
    if (!column.origin) continue;
    const auto known = std::ranges::find_if(out.columns, [&](const ResultColumn& each) {
      return each.rowColumn >= 0 && each.origin->source == column.origin->source;
    });
    if (known != out.columns.end()) {
      column.rowColumn = known->rowColumn;
      continue;
    }
    column.rowColumn = static_cast<int>(wanted.size());
    wanted.push_back({static_cast<int>(i), Form::RowId, 0});
  }
  out.sql = SqlWriter(out, order).query(query, wanted);
  return out;
}

}  // namespace jetsql
