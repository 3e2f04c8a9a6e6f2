#include <algorithm>
#include <array>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"
#include "platform/jetsql/ParserNesting.h"

namespace jetsql {
namespace {

struct WordOperator {
  std::u16string_view word;
  Operator op;
};
/// The operators between truth values, the loosest first.
constexpr std::array<WordOperator, 5> kLogical{{{u"IMP", Operator::Imp},
                                                {u"EQV", Operator::Eqv},
                                                {u"XOR", Operator::Xor},
                                                {u"OR", Operator::Or},
                                                {u"AND", Operator::And}}};

struct LevelOperator {
  std::u16string_view symbol;
  int level;
  Operator op;
};
/// Calculating operators, the loosest level first; `Mod` stands alone in level 1.
constexpr std::array<LevelOperator, 5> kArithmetic{{{u"+", 0, Operator::Add},
                                                    {u"-", 0, Operator::Subtract},
                                                    {u"\\", 2, Operator::IntegerDivide},
                                                    {u"*", 3, Operator::Multiply},
                                                    {u"/", 3, Operator::Divide}}};
constexpr int kModuloLevel = 1;
constexpr int kSignLevel = 4;

constexpr std::array<WordOperator, 6> kComparisons{{{u"=", Operator::Equal},
                                                    {u"<>", Operator::NotEqual},
                                                    {u"<", Operator::Less},
                                                    {u"<=", Operator::LessOrEqual},
                                                    {u">", Operator::Greater},
                                                    {u">=", Operator::GreaterOrEqual}}};

/// Words that stand for values.
struct WordValue {
  std::u16string_view word;
  int value;
};
constexpr std::array<WordValue, 6> kTruthWords{
    {{u"TRUE", -1}, {u"YES", -1}, {u"ON", -1}, {u"FALSE", 0}, {u"NO", 0}, {u"OFF", 0}}};

}  // namespace

ExpressionPtr Parser::loneExpression() {
  ExpressionPtr whole = clauseExpression();
  if (here().kind != Token::Kind::End) failExpression();
  return whole;
}

ExpressionPtr Parser::clauseExpression() {
  clauseBegin_ = place_;
  return expression();
}

ExpressionPtr Parser::expression(int level) {
  if (level == static_cast<int>(kLogical.size())) return negation();
  const WordOperator& logical = kLogical[static_cast<std::size_t>(level)];
  ExpressionPtr left = expression(level + 1);
  while (acceptWord(logical.word))
    left = binary(logical.op, std::move(left), expression(level + 1));
  return left;
}

ExpressionPtr Parser::negation() {
  const Nesting nesting(*this);
  if (!acceptWord(u"NOT")) return comparison();
  ExpressionPtr whole = node(Expression::Kind::Unary);
  whole->op = Operator::Not;
  add(*whole, negation());
  return whole;
}

ExpressionPtr Parser::comparison() {
  ExpressionPtr left = concatenation();
  while (ExpressionPtr compared = comparedWith(std::move(left))) left = std::move(compared);
  return left;
}

/// Takes `left` only when an operator follows; else leaves it and gives nothing.
ExpressionPtr Parser::comparedWith(ExpressionPtr&& left) {
  for (const WordOperator& each : kComparisons) {
    if (!accept(each.word)) continue;
    if (here().isWord(u"ALL") || here().isWord(u"ANY") || here().isWord(u"SOME")) {
      return quantified(std::move(left), each.op);
    }
    return binary(each.op, std::move(left), concatenation());
  }
  if (acceptWord(u"IS")) {
    ExpressionPtr whole = node(Expression::Kind::IsNull);
    whole->negated = acceptWord(u"NOT");
    if (!acceptWord(u"NULL")) failExpression();
    add(*whole, std::move(left));
    return whole;
  }
  const bool negated =
      here().isWord(u"NOT") && (ahead(1).isWord(u"LIKE") || ahead(1).isWord(u"ALIKE") ||
                                ahead(1).isWord(u"BETWEEN") || ahead(1).isWord(u"IN"));
  if (negated) advance();
  if (here().isWord(u"LIKE") || here().isWord(u"ALIKE")) {
    ExpressionPtr whole = node(Expression::Kind::Like);
    whole->text = here().isWord(u"LIKE") ? u"LIKE" : u"ALIKE";
    advance();
    whole->negated = negated;
    add(*whole, std::move(left));
    add(*whole, concatenation());
    return whole;
  }
  if (acceptWord(u"BETWEEN")) {
    ExpressionPtr whole = node(Expression::Kind::Between);
    whole->negated = negated;
    add(*whole, std::move(left));
    add(*whole, concatenation());
    if (!acceptWord(u"AND")) failExpression();
    add(*whole, concatenation());
    return whole;
  }
  if (acceptWord(u"IN")) return inOperand(std::move(left), negated);
  return nullptr;
}

ExpressionPtr Parser::inOperand(ExpressionPtr left, bool negated) {
  if (here().is(u"(") && ahead(1).isWord(u"SELECT")) {
    ExpressionPtr whole = node(Expression::Kind::InQuery);
    whole->negated = negated;
    add(*whole, std::move(left));
    subquery(*whole);
    return whole;
  }
  ExpressionPtr whole = node(Expression::Kind::InList);
  whole->negated = negated;
  add(*whole, std::move(left));
  if (!accept(u"(")) failExpression();
  do {
    add(*whole, expression());
  } while (accept(u","));
  expectClosing();
  return whole;
}

ExpressionPtr Parser::quantified(ExpressionPtr left, Operator op) {
  ExpressionPtr whole = node(Expression::Kind::Quantified);
  whole->op = op;
  whole->every = here().isWord(u"ALL");
  advance();
  add(*whole, std::move(left));
  subquery(*whole);
  return whole;
}

ExpressionPtr Parser::concatenation() {
  ExpressionPtr left = arithmetic(0);
  while (accept(u"&")) left = binary(Operator::Concatenate, std::move(left), arithmetic(0));
  return left;
}

ExpressionPtr Parser::arithmetic(int level) {
  if (level == kSignLevel) return sign();
  ExpressionPtr left = arithmetic(level + 1);
  for (;;) {
    const auto found = std::ranges::find_if(kArithmetic, [&](const LevelOperator& each) {
      return each.level == level && here().is(each.symbol);
    });
    Operator op = Operator::None;
    if (found != kArithmetic.end()) op = found->op;
    if (level == kModuloLevel && here().isWord(u"MOD")) op = Operator::Modulo;
    if (op == Operator::None) return left;
    advance();
    left = binary(op, std::move(left), arithmetic(level + 1));
  }
}

ExpressionPtr Parser::sign() {
  const Nesting nesting(*this);
  if (accept(u"+")) return sign();
  if (!accept(u"-")) return power();
  ExpressionPtr operand = sign();
  if (operand->kind == Expression::Kind::Number) {
    operand->number = -operand->number;
    return operand;
  }
  ExpressionPtr whole = node(Expression::Kind::Unary);
  whole->op = Operator::Negate;
  add(*whole, std::move(operand));
  return whole;
}

ExpressionPtr Parser::power() {
  ExpressionPtr left = primary();
  while (accept(u"^")) {
    // The exponent may bear a sign of its own.
    ExpressionPtr right = here().is(u"-") || here().is(u"+") ? sign() : primary();
    left = binary(Operator::Power, std::move(left), std::move(right));
  }
  return left;
}

ExpressionPtr Parser::primary() {
  const Token& token = here();
  switch (token.kind) {
    case Token::Kind::Whole:
    case Token::Kind::Decimal: {
      ExpressionPtr whole = node(Expression::Kind::Number);
      whole->number = token.number;
      const bool fits = token.kind == Token::Kind::Whole && token.number <= 2147483647.0;
      whole->type = fits ? Type::Long : Type::Double;
      advance();
      return whole;
    }
    case Token::Kind::Date: {
      ExpressionPtr whole = node(Expression::Kind::Date);
      whole->number = token.number;
      advance();
      return whole;
    }
    case Token::Kind::Text: {
      ExpressionPtr whole = node(Expression::Kind::Text);
      whole->text = token.text;
      advance();
      return whole;
    }
    case Token::Kind::QuotedName:
    case Token::Kind::Name:
      return namePrimary();
    default:
      break;
  }
  if (token.is(u"(") && ahead(1).isWord(u"SELECT")) {
    ExpressionPtr whole = node(Expression::Kind::Scalar);
    subquery(*whole);
    return whole;
  }
  if (!accept(u"(")) failExpression();
  ExpressionPtr whole = expression();
  expectClosing();
  return whole;
}

ExpressionPtr Parser::namePrimary() {
  const Token& token = here();
  if (token.kind == Token::Kind::Name && !ahead(1).is(u".") && !ahead(1).is(u"!")) {
    if (acceptWord(u"NULL")) return node(Expression::Kind::Null);
    if (here().isWord(u"EXISTS") && ahead(1).is(u"(")) {
      advance();
      ExpressionPtr whole = node(Expression::Kind::Exists);
      subquery(*whole);
      return whole;
    }
    for (const WordValue& each : kTruthWords) {
      if (!token.isWord(each.word) || ahead(1).is(u"(")) continue;
      ExpressionPtr whole = node(Expression::Kind::Boolean);
      whole->number = each.value;
      advance();
      return whole;
    }
    // Some words of clauses are functions where a bracket follows.
    const bool isFunction = token.isWord(u"LEFT") || token.isWord(u"RIGHT") || token.isWord(u"ASC");
    if (ahead(1).is(u"(") && (isFunction || isName())) {
      std::u16string function = token.text;
      advance();
      return call(std::move(function));
    }
  }
  if (!isName()) failExpression();
  return column();
}

ExpressionPtr Parser::call(std::u16string name) {
  advance();
  if (sameWord(name, u"COUNT") && here().is(u"*") && ahead(1).is(u")")) {
    advance();
    advance();
    return node(Expression::Kind::CountRows);
  }
  ExpressionPtr whole = node(Expression::Kind::Call);
  whole->text = std::move(name);
  if (accept(u")")) return whole;
  do {
    add(*whole, expression());
  } while (accept(u","));
  expectClosing();
  return whole;
}

ExpressionPtr Parser::column() {
  ExpressionPtr whole = node(Expression::Kind::Column);
  whole->path.push_back(here().text);
  advance();
  while (accept(u".") || accept(u"!")) {
    if (here().kind != Token::Kind::Name && here().kind != Token::Kind::QuotedName) {
      failExpression();
    }
    whole->path.push_back(here().text);
    advance();
  }
  return whole;
}

void Parser::subquery(Expression& owner) {
  const std::size_t clause = clauseBegin_;
  const int tallest = tallest_;
  if (!accept(u"(")) failExpression();
  tallest_ = 0;
  owner.query = query();
  clauseBegin_ = clause;
  expectClosing();
  owner.height = std::max(owner.height, tallest_ + 1);
  tallest_ = std::max(tallest, owner.height);
}

ExpressionPtr Parser::node(Expression::Kind kind) const {
  return std::make_unique<Expression>(kind);
}

ExpressionPtr Parser::binary(Operator op, ExpressionPtr left, ExpressionPtr right) {
  ExpressionPtr whole = node(Expression::Kind::Binary);
  whole->op = op;
  add(*whole, std::move(left));
  add(*whole, std::move(right));
  return whole;
}

void Parser::add(Expression& parent, ExpressionPtr argument) {
  parent.height = std::max(parent.height, argument->height + 1);
  if (parent.height > kTallestExpression) throw error::tooComplex();
  tallest_ = std::max(tallest_, parent.height);
  parent.arguments.push_back(std::move(argument));
}

}  // namespace jetsql
