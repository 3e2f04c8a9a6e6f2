#pragma once

#include "platform/jetsql/syntax/ParsedExpression.h"
#include "platform/jetsql/syntax/TokenStream.h"

namespace jetsql {

/// Tallest tree of an expression, including the queries in it: a chain of `And`s grows by one level
/// with each operand.
inline constexpr int kTallestExpression = 250;

/// Reads one expression by the dialect's grammar.
class ExpressionParser {
 public:
  /// The expression, and its clause, begin at the stream's position.
  explicit ExpressionParser(TokenStream& tokens) : tokens_(tokens), clause_(tokens.position()) {}

  /// Reads the expression and stops at the first word that can't belong to it. Raises the engine's
  /// syntax error.
  ParsedExpression read() { return operation(0); }

 private:
  ParsedExpression operation(int level);
  ParsedExpression negation();
  ParsedExpression comparison();
  bool compare(ParsedExpression& left);
  ParsedExpression inOperand(ParsedExpression left, bool negated);
  ParsedExpression quantified(ParsedExpression left, Operator op);
  ParsedExpression sign();
  ParsedExpression power();
  ParsedExpression primary();
  ParsedExpression namePrimary();
  ParsedExpression call(std::u16string name);
  ParsedExpression column();
  void readQuery(ParsedExpression& owner);

  TokenStream& tokens_;
  std::size_t clause_;
};

/// A node of an operator with one operand, or with two. Raises the error for a tree that grows too
/// tall.
ParsedExpression unary(Operator op, ParsedExpression operand);
ParsedExpression binary(Operator op, ParsedExpression left, ParsedExpression right);

/// Parses a text that is one expression and nothing else.
ParsedExpression parseExpression(std::u16string_view text);

}  // namespace jetsql
