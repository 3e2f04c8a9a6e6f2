#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jetsql/Query.h"
#include "platform/jetsql/Token.h"

namespace jetsql {

/// Longest statement, in 16-bit units.
inline constexpr std::size_t kLongestStatement = 65536;
/// Deepest nesting of expressions, parentheses, joins and queries.
inline constexpr int kDeepestNesting = 100;
/// Tallest tree of an expression, with the queries inside: a chain of `And`s grows one level a
/// link.
inline constexpr int kTallestExpression = 250;

class ParserNesting;

/// Reads the dialect's text by its grammar. Every member raises the engine's syntax error for a
/// text that isn't what it reads.
class Parser {
 public:
  explicit Parser(std::u16string_view text);

  /// A whole statement: a SELECT or UNION, perhaps behind PARAMETERS.
  std::unique_ptr<Query> statement();
  /// A text that is one expression and nothing else, or one entry of a SELECT list.
  ExpressionPtr loneExpression();
  SelectItem loneItem();

 private:
  friend class ParserNesting;
  using Nesting = ParserNesting;

  // Statements.
  std::unique_ptr<Query> query();
  std::unique_ptr<Query> queryTerm();
  std::unique_ptr<Select> select();
  void parameters();
  void selectOptions(Select& select);
  void selectItems(Select& select);
  SelectItem selectItem();
  void fromClause(Select& select);
  std::unique_ptr<FromItem> fromItem();
  std::unique_ptr<FromItem> fromPrimary();
  void fromAlias(FromItem& item);
  std::optional<JoinKind> joinWords();
  void groupByClause(Select& select);
  void orderByClause(Query& query);
  void endOfStatement();

  // Expressions, from the loosest operator to the tightest.
  ExpressionPtr clauseExpression();
  ExpressionPtr expression(int level = 0);
  ExpressionPtr negation();
  ExpressionPtr comparison();
  ExpressionPtr comparedWith(ExpressionPtr&& left);
  ExpressionPtr inOperand(ExpressionPtr left, bool negated);
  ExpressionPtr quantified(ExpressionPtr left, Operator op);
  ExpressionPtr concatenation();
  ExpressionPtr arithmetic(int level);
  ExpressionPtr sign();
  ExpressionPtr power();
  ExpressionPtr primary();
  ExpressionPtr namePrimary();
  ExpressionPtr call(std::u16string name);
  ExpressionPtr column();
  void subquery(Expression& owner);

  ExpressionPtr node(Expression::Kind kind) const;
  ExpressionPtr binary(Operator op, ExpressionPtr left, ExpressionPtr right);
  void add(Expression& parent, ExpressionPtr argument);

  // Words.
  const Token& here() const { return tokens_[place_]; }
  const Token& ahead(std::size_t count) const;
  void advance();
  bool accept(std::u16string_view symbol);
  bool acceptWord(std::u16string_view keyword);
  bool acceptWords(std::u16string_view first, std::u16string_view second);
  void expectClosing();
  bool isName() const;
  bool beginsQuery() const;
  std::u16string name();

  [[noreturn]] void failExpression(std::u16string_view what = u" (missing operator)");
  [[noreturn]] void failClause(std::u16string_view clause);
  void failIfBroken();
  std::u16string_view clauseText() const;

  std::u16string_view text_;
  std::vector<Token> tokens_;
  std::size_t place_ = 0;
  std::size_t clauseBegin_ = 0;  ///< token at which the clause's expression begins
  int nesting_ = 0;
  int tallest_ = 0;  ///< height of the expressions of the query that is being read
};

}  // namespace jetsql
