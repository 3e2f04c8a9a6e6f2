#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/jetsql/Catalog.h"
#include "platform/jetsql/Query.h"

namespace jetsql {

/// Most tables and queries that a statement may come to, those of its saved queries included.
inline constexpr int kMostSources = 200;
/// Deepest nesting of queries in queries.
inline constexpr int kDeepestQueries = 50;

class BinderDepth;

/// Finds out what the names in a parsed statement mean and which type each expression has. Raises
/// the engine's errors for names that mean nothing or too much, for functions that don't exist or
/// are called wrongly, and for columns that a grouped query doesn't group by.
class Binder {
 public:
  explicit Binder(Catalog& catalog);

  void bind(Query& query);

 private:
  /// A SELECT whose names can be seen, and the one around it.
  struct Scope {
    Select* select = nullptr;
    Query* query = nullptr;
    Scope* outer = nullptr;
    std::size_t visibleItems = 0;  ///< entries of the SELECT list whose alias can be used so far
    bool sawAggregate = false;
    /// The join whose condition is bound: it sees its own tables only.
    const FromItem* join = nullptr;
  };
  /// Where an expression stands.
  enum class Place : std::uint8_t { Plain, Where, InAggregate };

  friend class BinderDepth;
  using Depth = BinderDepth;

  void bindQuery(Query& query, Scope* outer);
  void bindUnion(Query& query, Scope* outer);
  void bindSelect(Query& query, Scope* outer);
  void bindFrom(FromItem& item, Scope& scope);
  void bindNamed(FromItem& item, Source& source);
  void bindConditions(FromItem& item, Scope& scope);
  void expandItems(Query& query, Scope& scope);
  void expandAll(Query& query, const SelectItem& item);
  void addOutput(Query& query, const Expression& expression, std::u16string alias);
  void nameOutputs(Query& query, const std::vector<bool>& aliased) const;
  void bindOrder(Query& query, Scope& scope);
  int outputNamed(const Query& query, const Expression& term) const;
  void requireGrouped(const Expression& expression, const Select& select) const;
  std::unique_ptr<Source> newSource();

  void bindExpression(Expression& expression, Scope& scope, Place place);
  void bindColumn(Expression& expression, Scope& scope);
  bool findColumn(Expression& expression, const Scope& scope) const;
  bool findAlias(Expression& expression, const Scope& scope) const;
  void bindCall(Expression& expression, Scope& scope, Place place);
  void bindSubquery(Expression& expression, Scope& scope);
  static Type operatorType(const Expression& expression);
  static Type callType(const Expression& expression);

  Catalog& catalog_;
  std::vector<std::int32_t> open_;  ///< saved queries that are being bound
  int sources_ = 0;
  int depth_ = 0;
};

}  // namespace jetsql
