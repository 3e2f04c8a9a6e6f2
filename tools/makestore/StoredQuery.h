#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/format/QueryRow.h"

namespace makestore {

/// One row of a saved query, as stored in the file.
struct QueryRow {
  jet::QueryAttribute attribute = jet::QueryAttribute::Start;
  std::optional<std::u16string> name1 = {};
  std::optional<std::u16string> name2 = {};
  std::optional<std::u16string> expression = {};
  std::optional<std::int16_t> flag = {};
  std::optional<std::int32_t> extra = {};
};

/// A saved query: its name and the rows that store it. Rows of one attribute keep their order.
struct StoredQuery {
  std::u16string name;
  std::vector<QueryRow> rows;
  std::int32_t objectFlags = 0;  ///< in the object list, where they repeat the query's kind
};

/// Builds a SELECT from its clauses. Expressions, table names and conditions are in the dialect.
class SelectQuery {
 public:
  SelectQuery& parameter(std::u16string name, std::int16_t type);
  SelectQuery& distinct();
  SelectQuery& top(int rows);
  SelectQuery& allColumns();
  SelectQuery& column(std::u16string expression, std::optional<std::u16string> alias = {});
  SelectQuery& from(std::u16string table, std::optional<std::u16string> alias = {});
  SelectQuery& innerJoin(std::u16string left, std::u16string right, std::u16string condition);
  SelectQuery& leftJoin(std::u16string left, std::u16string right, std::u16string condition);
  SelectQuery& rightJoin(std::u16string left, std::u16string right, std::u16string condition);
  SelectQuery& where(std::u16string condition);
  SelectQuery& groupBy(std::u16string expression);
  SelectQuery& having(std::u16string condition);
  SelectQuery& orderBy(std::u16string expression, bool descending = false);

  StoredQuery named(std::u16string name) const;

 private:
  SelectQuery& join(jet::QueryJoin kind, std::u16string left, std::u16string right,
                    std::u16string condition);

  std::vector<QueryRow> rows_;
  std::int16_t options_ = 0;
  std::optional<std::u16string> top_;
};

/// A query that combines two statements by UNION, or by UNION ALL if `all` is set. The first may
/// itself be a UNION.
StoredQuery unionQuery(std::u16string name, std::u16string first, std::u16string second,
                       bool all = false);

}  // namespace makestore
