#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/binding/BoundExpression.h"
#include "platform/jetsql/syntax/ParsedQuery.h"

namespace jetsql {

/// A column of a source.
struct SourceColumn {
  std::u16string name;
  Type type = Type::Null;
};

/// A table or query within FROM.
struct Source {
  std::u16string name;                      ///< by which its columns are qualified
  int number = 0;                           ///< unique within the statement
  const jet::Table* table = nullptr;        ///< either a table
  std::shared_ptr<const BoundQuery> query;  ///< or a query
  std::vector<SourceColumn> columns;
};

/// An item of FROM: a source, or a join of two items.
struct BoundFrom {
  const Source* source = nullptr;  ///< absent for a join
  JoinKind join = JoinKind::Inner;
  std::vector<BoundFrom> sides;
  BoundPtr condition;

  bool isJoin() const { return !sides.empty(); }
};

/// One SELECT, without its ORDER BY.
struct BoundSelect {
  bool distinct = false;
  bool distinctRow = false;
  bool grouped = false;
  std::optional<Top> top;
  std::vector<std::unique_ptr<const Source>> sources;
  std::vector<BoundFrom> from;
  BoundPtr where;
  std::vector<BoundPtr> groupBy;
  BoundPtr having;
};

/// A column of a query's result.
struct OutputColumn {
  std::u16string name;
  Type type = Type::Null;
  BoundPtr expression;  ///< absent for a union's
};

struct BoundOrder {
  BoundPtr expression;  ///< absent where it is an output column
  int output = -1;      ///< the output column that it refers to or equals
  bool descending = false;
};

/// A SELECT or a UNION of two queries, with its order.
struct BoundQuery {
  std::optional<BoundSelect> select;  ///< absent for a union
  std::shared_ptr<const BoundQuery> left;
  std::shared_ptr<const BoundQuery> right;
  bool all = false;  ///< UNION ALL
  std::vector<OutputColumn> columns;
  std::vector<BoundOrder> orderBy;
};

/// The table column that a column's values come from, through any number of queries that return it
/// unchanged.
struct Origin {
  const jet::Table* table = nullptr;
  jet::ColumnIndex column;
  /// The table as one source of the statement; a table may be several sources.
  const Source* source = nullptr;
};
/// Absent where the expression is calculated, and where the query is a union, grouped or distinct:
/// its rows then are not single rows of a table.
std::optional<Origin> originOf(const BoundExpression& expression);
std::optional<Origin> originOf(const BoundQuery& query, const BoundExpression& expression);

}  // namespace jetsql
