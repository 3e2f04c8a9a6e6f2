#include "platform/jetsql/Translation.h"

#include <algorithm>

#include "platform/jetsql/SqlWriter.h"

namespace jetsql {

Translation translate(Query& query, jet::TextOrder order) {
  Translation out;
  std::vector<Demand> wanted;
  std::vector<Demand> rows;
  std::vector<const Source*> sources;
  for (std::size_t i = 0; i < query.columns.size(); ++i) {
    const auto place = static_cast<int>(i);
    wanted.push_back({place, Form::Exact, 0});
    ResultColumn column{query.columns[i].name, query.columns[i].type, {}, {}, 0};
    if (const auto origin = originOf(query, place)) {
      const auto known = std::ranges::find(sources, origin->source);
      column.table = origin->table->identity();
      column.tableColumn = origin->table->identity(origin->column);
      column.sourceRow = static_cast<int>(known - sources.begin());
      if (known == sources.end()) {
        sources.push_back(origin->source);
        rows.push_back({place, Form::RowId, 0});
      }
    }
    out.columns.push_back(std::move(column));
  }
  wanted.insert(wanted.end(), rows.begin(), rows.end());
  out.sourceRows = static_cast<int>(rows.size());
  out.sql = SqlWriter(out, order).query(query, wanted);
  return out;
}

}  // namespace jetsql
