#pragma once

#include <set>
#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

struct BoundQuery;

/// The columns, rows and order that a query is written to return.
struct Request {
  std::set<int> columns = {};     ///< its columns that are requested, as `c<index>`
  std::set<int> rows = {};        ///< its columns whose table rows are requested, as `r<index>`
  std::set<int> orderTerms = {};  ///< the terms of its order that are requested, as `o<index>`
  bool ordered = true;            ///< false where its order doesn't matter
};

/// The SQL text of a query with the requested rows, columns and order terms, in this order.
std::string writeQuery(StatementWriter& writer, const BoundQuery& query, const Request& request);

}  // namespace jetsql
