#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/jetsql/syntax/ParsedExpression.h"

namespace jetsql {

/// One entry of a SELECT list.
struct ParsedItem {
  std::optional<ParsedExpression> expression;  ///< absent for `*` and `name.*`
  std::u16string qualifier;                    ///< the name before `.*`
  std::u16string alias;
};

struct ParsedOrder {
  ParsedExpression expression;
  bool descending = false;
};

enum class JoinKind : std::uint8_t { Inner, Left, Right };

/// An item of FROM: a table or saved query by name, a query in parentheses, or a join.
struct ParsedFrom {
  std::u16string name;
  std::u16string alias;
  std::shared_ptr<const ParsedQuery> query;
  JoinKind join = JoinKind::Inner;
  std::vector<ParsedFrom> sides;  ///< two of a join, else none
  std::optional<ParsedExpression> condition;

  bool isJoin() const { return !sides.empty(); }
};

struct Top {
  double count = 0;
  bool percent = false;
};

/// One SELECT, without its ORDER BY.
struct ParsedSelect {
  bool distinct = false;
  bool distinctRow = false;
  std::optional<Top> top;
  std::vector<ParsedItem> items;
  std::vector<ParsedFrom> from;
  std::optional<ParsedExpression> where;
  std::vector<ParsedExpression> groupBy;
  std::optional<ParsedExpression> having;
};

/// A SELECT or a UNION of two queries, with its order.
struct ParsedQuery {
  std::optional<ParsedSelect> select;  ///< absent for a union
  std::shared_ptr<const ParsedQuery> left;
  std::shared_ptr<const ParsedQuery> right;
  bool all = false;  ///< UNION ALL
  std::vector<ParsedOrder> orderBy;
  bool hasParameters = false;
  int height = 0;  ///< of the tallest expression in it
};

}  // namespace jetsql
