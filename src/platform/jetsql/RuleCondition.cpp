#include "platform/jetsql/RuleCondition.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"
#include "platform/jetsql/Token.h"

namespace jetsql {
namespace {

constexpr std::array<std::u16string_view, 5> kJoiningWords{u"AND", u"OR", u"XOR", u"EQV", u"IMP"};
constexpr std::array<std::u16string_view, 6> kComparisons{u"=", u"<>", u"<", u"<=", u">", u">="};
constexpr std::array<std::u16string_view, 5> kTestingWords{u"IN", u"LIKE", u"ALIKE", u"BETWEEN",
                                                           u"IS"};

template <std::size_t Count>
bool isAnyWord(const Token& token, const std::array<std::u16string_view, Count>& words) {
  return std::ranges::any_of(words, [&](std::u16string_view word) { return token.isWord(word); });
}

bool lacksLeftOperand(const Token& first) {
  return isAnyWord(first, kTestingWords) ||
         std::ranges::any_of(kComparisons,
                             [&](std::u16string_view symbol) { return first.is(symbol); });
}

bool namesColumn(const Expression& expression) {
  return expression.kind == Expression::Kind::Column ||
         std::ranges::any_of(expression.arguments,
                             [](const ExpressionPtr& each) { return namesColumn(*each); });
}

/// True for a term that says something by itself; false for a value.
bool isCondition(const Expression& term) {
  switch (term.kind) {
    case Expression::Kind::Unary:
    case Expression::Kind::Binary:
      return isLogical(term.op) || isComparison(term.op) || namesColumn(term);
    case Expression::Kind::IsNull:
    case Expression::Kind::Like:
    case Expression::Kind::Between:
    case Expression::Kind::InList:
      return true;
    default:
      return namesColumn(term);
  }
}

/// A column's criterion on its way to a full expression: each term gets the left operand that it
/// lacks.
class Criterion {
 public:
  Criterion(std::u16string_view text, std::u16string_view column)
      : text_(text), tokens_(tokenize(text)), column_(u"[" + std::u16string(column) + u"]") {}

  std::u16string completed() {
    while (!atEnd()) {
      if (isAnyWord(here(), kJoiningWords) || here().isWord(u"NOT") || here().is(u")") ||
          opensGroup())
        ++place_;
      else
        term();
    }
    return full_.append(text_.substr(copied_));
  }

 private:
  const Token& here() const { return tokens_[place_]; }
  bool atEnd() const { return here().kind == Token::Kind::End; }

  /// The token that follows the parenthesis matching the one at `open`.
  std::size_t behindGroup(std::size_t open) const {
    int depth = 0;
    std::size_t at = open;
    for (; tokens_[at].kind != Token::Kind::End; ++at) {
      if (tokens_[at].is(u"(")) ++depth;
      if (tokens_[at].is(u")") && --depth == 0) return at + 1;
    }
    return at;
  }

  /// True at a parenthesis around terms; one around a part of a value is followed by an operator.
  bool opensGroup() const {
    if (!here().is(u"(")) return false;
    const Token& next = tokens_[behindGroup(place_)];
    return next.kind == Token::Kind::End || next.is(u")") || isAnyWord(next, kJoiningWords);
  }

  std::size_t endOfTerm() const {
    bool between = false;
    std::size_t at = place_;
    while (tokens_[at].kind != Token::Kind::End && !tokens_[at].is(u")")) {
      if (tokens_[at].isWord(u"BETWEEN"))
        between = true;
      else if (tokens_[at].isWord(u"AND") && between)
        between = false;
      else if (isAnyWord(tokens_[at], kJoiningWords))
        break;
      at = tokens_[at].is(u"(") ? behindGroup(at) : at + 1;
    }
    return at;
  }

  void term() {
    const std::size_t end = endOfTerm();
    const std::size_t begin = here().begin;
    full_.append(text_.substr(copied_, begin - copied_));
    copied_ = begin;
    if (lacksLeftOperand(here())) {
      full_.append(column_).append(u" ");
    } else {
      const std::u16string_view value = text_.substr(begin, tokens_[end - 1].end - begin);
      if (!isCondition(*Parser(value).loneExpression())) full_.append(column_).append(u" = ");
    }
    place_ = end;
  }

  std::u16string_view text_;
  std::vector<Token> tokens_;
  std::size_t place_ = 0;
  std::u16string column_;
  std::u16string full_;
  std::size_t copied_ = 0;  ///< of the text, so far
};

ExpressionPtr number(double value, Type type) {
  auto literal = std::make_unique<Expression>(Expression::Kind::Number);
  literal->number = value;
  literal->type = type;
  return literal;
}

/// A value of a row as a literal.
struct Literal {
  ExpressionPtr operator()(const runtime::Null&) const {
    return std::make_unique<Expression>(Expression::Kind::Null);
  }
  ExpressionPtr operator()(bool value) const {
    auto literal = std::make_unique<Expression>(Expression::Kind::Boolean);
    literal->number = value ? -1 : 0;
    return literal;
  }
  ExpressionPtr operator()(std::uint8_t value) const { return number(value, Type::Byte); }
  ExpressionPtr operator()(std::int16_t value) const { return number(value, Type::Integer); }
  ExpressionPtr operator()(std::int32_t value) const { return number(value, Type::Long); }
  ExpressionPtr operator()(const runtime::Currency& value) const {
    return number(value.toDouble(), Type::Currency);
  }
  ExpressionPtr operator()(float value) const { return number(value, Type::Single); }
  ExpressionPtr operator()(double value) const { return number(value, Type::Double); }
  ExpressionPtr operator()(const runtime::Date& value) const {
    auto literal = std::make_unique<Expression>(Expression::Kind::Date);
    literal->number = value.days;
    return literal;
  }
  ExpressionPtr operator()(const std::u16string& value) const {
    auto literal = std::make_unique<Expression>(Expression::Kind::Text);
    literal->text = value;
    return literal;
  }
  ExpressionPtr operator()(const runtime::Decimal& value) const {
    const std::string digits(value.digits.begin(), value.digits.end());
    return number(std::strtod(digits.c_str(), nullptr), Type::Decimal);
  }
  ExpressionPtr operator()(const runtime::Binary&) const { throw error::typeMismatch(); }
  ExpressionPtr operator()(const runtime::Guid&) const { throw error::typeMismatch(); }
};

/// Puts the row's values in the columns' stead.
void fillIn(ExpressionPtr& expression, const jet::ValidationRule& rule, const jet::NewRow& row) {
  if (expression->query) throw error::engine(u"A rule can't contain a query.");
  for (ExpressionPtr& argument : expression->arguments) fillIn(argument, rule, row);
  if (expression->kind != Expression::Kind::Column) return;
  const std::vector<std::u16string>& path = expression->path;
  const bool isOwn = path.size() == 1 || (path.size() == 2 && jet::sameName(path[0], rule.table));
  const auto value = isOwn ? row.value(path.back()) : std::nullopt;
  if (!value) throw error::engine(u"The table has no column '" + pathText(path) + u"'.");
  expression = std::visit(Literal(), value->get());
}

}  // namespace

std::unique_ptr<Query> brokenBy(const jet::ValidationRule& rule, const jet::NewRow& row) {
  const std::u16string full =
      rule.column.empty() ? rule.expression : Criterion(rule.expression, rule.column).completed();
  ExpressionPtr condition = Parser(full).loneExpression();
  fillIn(condition, rule, row);
  auto negation = std::make_unique<Expression>(Expression::Kind::Unary);
  negation->op = Operator::Not;
  negation->height = condition->height + 1;
  negation->arguments.push_back(std::move(condition));

  auto query = std::make_unique<Query>();
  query->select = std::make_unique<Select>();
  query->select->items.emplace_back().expression = number(1, Type::Long);
  query->select->where = std::move(negation);
  return query;
}

}  // namespace jetsql
