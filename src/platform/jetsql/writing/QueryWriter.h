#pragma once

#include <set>
#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

/// What a query is written for.
struct Request {
  std::set<int> columns = {};     ///< its columns that are wanted, as `c<index>`
  std::set<int> rows = {};        ///< its columns whose table rows are wanted, as `r<index>`
  std::set<int> orderTerms = {};  ///< the terms of its order that are wanted, as `o<index>`
  bool ordered = true;            ///< false where its order is of no use
};

/// SQLite's text of a query with the rows, the columns and the order terms that are wanted, in this
/// order.
std::string writeQuery(StatementWriter& writer, const BoundQuery& query, const Request& request);

}  // namespace jetsql
