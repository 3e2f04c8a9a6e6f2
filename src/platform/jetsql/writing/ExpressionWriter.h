#pragma once

#include <string>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

/// Writes SQLite's text of bound expressions. Raises the mismatch error for types that don't go
/// together.
class ExpressionWriter {
 public:
  explicit ExpressionWriter(StatementWriter& writer) : writer_(writer) {}

  /// The value as SQLite has it: a truth value is -1 or 0, an amount its ten-thousandths.
  std::string value(const BoundExpression& expression);
  /// The value as one of that type, to which its own leads.
  std::string valueAs(const BoundExpression& expression, Type type);
  /// What expressions calculate with: the value, and of an amount the plain number.
  std::string plain(const BoundExpression& expression);
  /// The value as it compares: a text by the file's order.
  std::string compared(const BoundExpression& expression);
  /// The value as it compares with others, of which it is one.
  std::string comparedAmong(const BoundExpression& expression,
                            const std::vector<BoundPtr>& operands);
  /// The value as a term of ORDER BY or GROUP BY, where a bare number would be a column's index.
  std::string sorted(const BoundExpression& expression);
  /// The value as what `&` and the text functions take.
  std::string asText(const BoundExpression& expression);
  std::string asNumber(const BoundExpression& expression);
  /// The expression as SQLite's truth value, in a form that lets it reach an index.
  std::string condition(const BoundExpression& expression);

  StatementWriter& statement() { return writer_; }

 private:
  std::string written(const BoundExpression& expression);
  std::string amount(const BoundExpression& expression);
  std::string plainCondition(const BoundExpression& expression);
  std::string testCondition(const BoundExpression& expression);
  std::string operatorValue(const BoundExpression& expression);
  std::string logical(const BoundExpression& expression);
  std::string comparison(const BoundExpression& expression);
  std::string between(const BoundExpression& expression);
  std::string inList(const BoundExpression& expression);
  std::string subqueryCondition(const BoundExpression& expression);
  std::string scalarQuery(const BoundExpression& expression);
  std::string chain(const BoundExpression& expression,
                    std::string (ExpressionWriter::*form)(const BoundExpression&));

  StatementWriter& writer_;
};

/// Types that can be compared with each other compare in one of these ways.
enum class Comparing : std::uint8_t { Plain, Texts, GuidText, Null };
/// Raises the mismatch error for types that can't be compared.
Comparing comparing(Type a, Type b);

/// A written value of one type as one of another.
std::string converted(const std::string& value, Type from, Type to);

/// A written value with the collating sequence that its type compares by.
std::string collated(const std::string& value, Type type);

}  // namespace jetsql
