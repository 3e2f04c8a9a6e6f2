#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/jetsql/writing/StatementWriter.h"

namespace jetsql {

struct BoundExpression;

/// Writes bound expressions as SQL. Raises the mismatch error for incompatible types.
class ExpressionWriter {
 public:
  explicit ExpressionWriter(StatementWriter& writer) : writer_(writer) {}

  /// The value as SQLite has it: a truth value is -1 or 0, an amount its ten-thousandths, a scaled
  /// decimal its text (see `kDecimalKey`).
  std::string value(const BoundExpression& expression);
  /// The value in the form of `type`, the common type of this and other values.
  std::string valueAs(const BoundExpression& expression, Type type);
  /// The value for calculations: an amount or a scaled decimal as a plain number, any other value
  /// as `value`.
  std::string plain(const BoundExpression& expression);
  /// The value for comparisons: a text with the collating sequence of the file's order.
  std::string compared(const BoundExpression& expression);
  /// The value for a comparison among `operands`, which include it. Amounts stay exact where all
  /// operands are exact in ten-thousandths, scaled decimals where all are scaled decimals; other
  /// numbers are plain, and texts get their collating sequence.
  std::string comparedAmong(const BoundExpression& expression,
                            const std::vector<std::shared_ptr<const BoundExpression>>& operands);
  /// The value as a term of ORDER BY or GROUP BY, where a bare number would be a column's index.
  std::string sorted(const BoundExpression& expression);
  /// The value as a text, for `&` and the text functions.
  std::string asText(const BoundExpression& expression);
  std::string asNumber(const BoundExpression& expression);
  /// The expression as SQLite's truth value, in a form for which SQLite can use an index.
  std::string condition(const BoundExpression& expression);

  StatementWriter& statement() { return writer_; }

 private:
  std::string written(const BoundExpression& expression);
  std::string plainAmong(const BoundExpression& expression,
                         const std::vector<std::shared_ptr<const BoundExpression>>& operands);
  std::string amount(const BoundExpression& expression);
  std::string testCondition(const BoundExpression& expression);
  std::string operatorValue(const BoundExpression& expression);
  std::string logical(const BoundExpression& expression);
  std::string comparison(const BoundExpression& expression);
  std::string subqueryCondition(const BoundExpression& expression);
  std::string scalarQuery(const BoundExpression& expression);
  std::string chain(const BoundExpression& expression,
                    std::string (ExpressionWriter::*form)(const BoundExpression&));

  StatementWriter& writer_;
};

/// The ways in which values of two types are compared: as they are, by the collating sequence, a
/// GUID as text with a text, or not at all since one side is Null.
enum class Comparing : std::uint8_t { Plain, Texts, GuidText, Null };
/// Raises the mismatch error for types that can't be compared.
Comparing comparing(Type a, Type b);

/// Converts a written value from one type to another.
std::string converted(const std::string& value, Type from, Type to);

/// A written value with the collating sequence of its type.
std::string collated(const std::string& value, Type type);

}  // namespace jetsql
