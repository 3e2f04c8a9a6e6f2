#pragma once

#include "platform/jetsql/binding/BoundQuery.h"

namespace jetsql {

/// The saved queries that are being bound, the innermost first.
struct OpenQuery {
  jet::ObjectId id;
  int depth = 1;
  const OpenQuery* outer = nullptr;
};

/// A query that is being bound, whose names are visible, and the query around it.
struct Scope {
  /// Its sources, and the columns bound so far, whose aliases can be used.
  const BoundQuery& query;
  Scope* outer = nullptr;
  const OpenQuery* open = nullptr;
  /// The join whose condition is bound: it sees its own tables only.
  const BoundFrom* join = nullptr;
  bool sawAggregate = false;
};

/// The clause that an expression belongs to, as far as it restricts the expression.
enum class Clause : std::uint8_t { Plain, Where, InAggregate };

}  // namespace jetsql
