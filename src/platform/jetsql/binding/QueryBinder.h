#pragma once

#include <memory>
#include <vector>

#include "platform/jet/engine/Database.h"
#include "platform/jetsql/binding/ExpressionBinder.h"

namespace jetsql {

/// Most tables and queries in a statement, those of its saved queries included.
inline constexpr int kMostSources = 200;
/// Deepest nesting of saved queries in saved queries, and of queries and expressions in all.
inline constexpr int kDeepestQueries = 50;
inline constexpr int kDeepestBinding = 1500;

/// Resolves the names in a parsed query. Tables and saved queries are looked up in the file when
/// the query names them. Raises the engine's errors for unknown or ambiguous names, for linked
/// tables, for saved queries that can't be run and for columns that a grouped query doesn't group
/// by.
class QueryBinder {
 public:
  explicit QueryBinder(jet::Database& database) : database_(database) {}

  BoundQuery bind(const ParsedQuery& query) { return bindQuery(query, nullptr, nullptr); }
  /// A query within an expression, which sees the names of the query around it.
  std::shared_ptr<const BoundQuery> bindWithin(const ParsedQuery& query, Scope& around);
  /// Levels of queries and expressions that are being bound.
  int& depth() { return depth_; }

 private:
  BoundQuery bindQuery(const ParsedQuery& query, Scope* outer, const OpenQuery* open);
  void bindUnion(const ParsedQuery& query, BoundQuery& made, Scope* outer, const OpenQuery* open);
  void bindSelect(const ParsedQuery& query, BoundQuery& made, Scope* outer, const OpenQuery* open);
  BoundFrom bindFrom(const ParsedFrom& item, BoundSelect& select, const OpenQuery* open);
  void bindNamed(const ParsedFrom& item, Source& source, const OpenQuery* open);
  void bindConditions(const ParsedFrom& item, BoundFrom& made, Scope& scope);
  void bindItems(const ParsedSelect& select, BoundQuery& made, Scope& scope);
  void bindOrder(const ParsedQuery& query, BoundQuery& made, Scope& scope);

  jet::Database& database_;
  int sources_ = 0;
  int depth_ = 0;
};

}  // namespace jetsql
