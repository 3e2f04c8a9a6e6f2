#include "platform/jetsql/syntax/ExpressionParser.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/jetsql/syntax/DepthGuard.h"
#include "platform/jetsql/syntax/QueryParser.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

using Kind = ExpressionKind;

struct BinaryOperator {
  std::u16string_view word;
  Operator op;
  int level = 0;  ///< the higher, the tighter
};
constexpr std::array<BinaryOperator, 12> kOperators{{{u"IMP", Operator::Imp, 0},
                                                     {u"EQV", Operator::Eqv, 1},
                                                     {u"XOR", Operator::Xor, 2},
                                                     {u"OR", Operator::Or, 3},
                                                     {u"AND", Operator::And, 4},
                                                     {u"&", Operator::Concatenate, 6},
                                                     {u"+", Operator::Add, 7},
                                                     {u"-", Operator::Subtract, 7},
                                                     {u"MOD", Operator::Modulo, 8},
                                                     {u"\\", Operator::IntegerDivide, 9},
                                                     {u"*", Operator::Multiply, 10},
                                                     {u"/", Operator::Divide, 10}}};
/// The operators of this level and above have values as their operands. Between them and the
/// operators of truth values are the comparisons and `Not`.
constexpr int kValueLevel = 6;

constexpr std::array<BinaryOperator, 6> kComparisons{{{u"=", Operator::Equal},
                                                      {u"<>", Operator::NotEqual},
                                                      {u"<", Operator::Less},
                                                      {u"<=", Operator::LessOrEqual},
                                                      {u">", Operator::Greater},
                                                      {u">=", Operator::GreaterOrEqual}}};

struct TestWord {
  std::u16string_view word;
  Kind kind;
};
constexpr std::array<TestWord, 4> kTests{{{u"LIKE", Kind::Like},
                                          {u"ALIKE", Kind::Alike},
                                          {u"BETWEEN", Kind::Between},
                                          {u"IN", Kind::InList}}};

/// Words that stand for values.
struct WordValue {
  std::u16string_view word;
  int value;
};
constexpr std::array<WordValue, 6> kTruthWords{
    {{u"TRUE", -1}, {u"YES", -1}, {u"ON", -1}, {u"FALSE", 0}, {u"NO", 0}, {u"OFF", 0}}};

void add(ParsedExpression& parent, ParsedExpression argument) {
  parent.height = std::max(parent.height, argument.height + 1);
  if (parent.height > kTallestExpression) throw error::tooComplex();
  parent.arguments.push_back(std::move(argument));
}

ParsedExpression node(Kind kind, double number = 0, std::u16string text = {}) {
  return {{.kind = kind, .number = number, .text = std::move(text)}};
}

/// Absent for a token that is no literal.
std::optional<Kind> literalKind(const Token& token) {
  if (token.kind == Token::Kind::Text) return Kind::Text;
  if (token.kind == Token::Kind::Date) return Kind::Date;
  if (token.kind == Token::Kind::Decimal) return Kind::Number;
  if (token.kind != Token::Kind::Integer) return std::nullopt;
  return token.number <= 2147483647.0 ? Kind::Integer : Kind::Number;
}

ParsedExpression test(Kind kind, bool negated, ParsedExpression operand) {
  ParsedExpression made{{.kind = kind, .negated = negated}};
  add(made, std::move(operand));
  return made;
}

}  // namespace

ParsedExpression unary(Operator op, ParsedExpression operand) {
  ParsedExpression made{{.kind = Kind::Unary, .op = op}};
  add(made, std::move(operand));
  return made;
}

ParsedExpression binary(Operator op, ParsedExpression left, ParsedExpression right) {
  ParsedExpression made{{.kind = Kind::Binary, .op = op}};
  add(made, std::move(left));
  add(made, std::move(right));
  return made;
}

ParsedExpression parseExpression(std::u16string_view text) {
  TokenStream tokens(text);
  ParsedExpression read = ExpressionParser(tokens).read();
  if (!tokens.atEnd()) tokens.failExpression(0);
  return read;
}

/// Reads the operands that are joined by operators of `level` or a higher one.
ParsedExpression ExpressionParser::operation(int level) {
  const bool isValue = level >= kValueLevel;
  ParsedExpression left = isValue ? sign() : negation();
  for (;;) {
    const Token& here = tokens_.here();
    const auto found = std::ranges::find_if(kOperators, [&](const BinaryOperator& each) {
      return each.level >= level && isValue == (each.level >= kValueLevel) && here.is(each.word);
    });
    if (found == kOperators.end()) return left;
    tokens_.advance();
    left = binary(found->op, std::move(left), operation(found->level + 1));
  }
}

ParsedExpression ExpressionParser::negation() {
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  return tokens_.accept(u"NOT") ? unary(Operator::Not, negation()) : comparison();
}

ParsedExpression ExpressionParser::comparison() {
  ParsedExpression left = operation(kValueLevel);
  while (compare(left)) {
  }
  return left;
}

/// Makes `left` the first operand of the test that follows; false where no test follows.
bool ExpressionParser::compare(ParsedExpression& left) {
  for (const BinaryOperator& each : kComparisons) {
    if (!tokens_.accept(each.word)) continue;
    const Token& next = tokens_.here();
    const bool isQuantified = next.is(u"ALL") || next.is(u"ANY") || next.is(u"SOME");
    left = isQuantified ? quantified(std::move(left), each.op)
                        : binary(each.op, std::move(left), operation(kValueLevel));
    return true;
  }
  if (tokens_.accept(u"IS")) {
    const bool negated = tokens_.accept(u"NOT");
    if (!tokens_.accept(u"NULL")) tokens_.failExpression(clause_);
    left = test(Kind::IsNull, negated, std::move(left));
    return true;
  }
  const bool negated = tokens_.here().is(u"NOT");
  const Token& word = tokens_.ahead(negated ? 1 : 0);
  const auto found =
      std::ranges::find_if(kTests, [&](const TestWord& each) { return word.is(each.word); });
  if (found == kTests.end()) return false;
  tokens_.advance(negated ? 2 : 1);
  if (found->kind == Kind::InList) {
    left = inOperand(std::move(left), negated);
    return true;
  }
  left = test(found->kind, negated, std::move(left));
  add(left, operation(kValueLevel));
  if (found->kind != Kind::Between) return true;
  if (!tokens_.accept(u"AND")) tokens_.failExpression(clause_);
  add(left, operation(kValueLevel));
  return true;
}

ParsedExpression ExpressionParser::inOperand(ParsedExpression left, bool negated) {
  if (tokens_.here().is(u"(") && tokens_.ahead(1).is(u"SELECT")) {
    ParsedExpression made = test(Kind::InQuery, negated, std::move(left));
    readQuery(made);
    return made;
  }
  ParsedExpression made = test(Kind::InList, negated, std::move(left));
  if (!tokens_.accept(u"(")) tokens_.failExpression(clause_);
  do {
    add(made, read());
  } while (tokens_.accept(u","));
  tokens_.expectClosing(clause_);
  return made;
}

ParsedExpression ExpressionParser::quantified(ParsedExpression left, Operator op) {
  ParsedExpression made = test(Kind::Quantified, false, std::move(left));
  made.op = op;
  made.every = tokens_.here().is(u"ALL");
  tokens_.advance();
  readQuery(made);
  return made;
}

ParsedExpression ExpressionParser::sign() {
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  if (tokens_.accept(u"+")) return sign();
  if (!tokens_.accept(u"-")) return power();
  ParsedExpression operand = sign();
  if (operand.kind != Kind::Integer && operand.kind != Kind::Number) {
    return unary(Operator::Negate, std::move(operand));
  }
  operand.number = -operand.number;
  return operand;
}

ParsedExpression ExpressionParser::power() {
  ParsedExpression left = primary();
  while (tokens_.accept(u"^")) {
    // The exponent may have a sign of its own.
    const bool isSigned = tokens_.here().is(u"-") || tokens_.here().is(u"+");
    left = binary(Operator::Power, std::move(left), isSigned ? sign() : primary());
  }
  return left;
}

ParsedExpression ExpressionParser::primary() {
  const Token& token = tokens_.here();
  if (token.kind == Token::Kind::Name || token.kind == Token::Kind::QuotedName) {
    return namePrimary();
  }
  if (const auto kind = literalKind(token)) {
    tokens_.advance();
    return node(*kind, token.number, token.text);
  }
  if (token.is(u"(") && tokens_.ahead(1).is(u"SELECT")) {
    ParsedExpression made = node(Kind::Scalar);
    readQuery(made);
    return made;
  }
  if (!tokens_.accept(u"(")) tokens_.failExpression(clause_);
  ParsedExpression inner = read();
  tokens_.expectClosing(clause_);
  return inner;
}

ParsedExpression ExpressionParser::namePrimary() {
  const Token& token = tokens_.here();
  const Token& next = tokens_.ahead(1);
  if (token.kind == Token::Kind::Name && !next.is(u".") && !next.is(u"!")) {
    if (tokens_.accept(u"NULL")) return node(Kind::Null);
    if (token.is(u"EXISTS") && next.is(u"(")) {
      tokens_.advance();
      ParsedExpression made = node(Kind::Exists);
      readQuery(made);
      return made;
    }
    for (const WordValue& each : kTruthWords) {
      if (!token.is(each.word) || next.is(u"(")) continue;
      tokens_.advance();
      return node(Kind::Boolean, each.value);
    }
    // Some keywords of clauses are functions where a parenthesis follows.
    const bool isFunction = token.is(u"LEFT") || token.is(u"RIGHT") || token.is(u"ASC");
    if (next.is(u"(") && (isFunction || tokens_.isName())) {
      std::u16string function = token.text;
      tokens_.advance();
      return call(std::move(function));
    }
  }
  if (!tokens_.isName()) tokens_.failExpression(clause_);
  return column();
}

ParsedExpression ExpressionParser::call(std::u16string name) {
  tokens_.advance();
  ParsedExpression made = node(Kind::Call);
  made.text = std::move(name);
  if (sameWord(made.text, u"COUNT") && tokens_.here().is(u"*") && tokens_.ahead(1).is(u")")) {
    made.text = u"Count(*)";
    tokens_.advance();
  }
  if (tokens_.accept(u")")) return made;
  do {
    add(made, read());
  } while (tokens_.accept(u","));
  tokens_.expectClosing(clause_);
  return made;
}

ParsedExpression ExpressionParser::column() {
  ParsedExpression made = node(Kind::Column);
  made.path.push_back(tokens_.here().text);
  tokens_.advance();
  while (tokens_.accept(u".") || tokens_.accept(u"!")) {
    const Token& part = tokens_.here();
    if (part.kind != Token::Kind::Name && part.kind != Token::Kind::QuotedName) {
      tokens_.failExpression(clause_);
    }
    made.path.push_back(part.text);
    tokens_.advance();
  }
  return made;
}

/// Reads the query in parentheses that belongs to an expression.
void ExpressionParser::readQuery(ParsedExpression& owner) {
  if (!tokens_.accept(u"(")) tokens_.failExpression(clause_);
  owner.query = std::make_shared<const ParsedQuery>(QueryParser(tokens_).read());
  owner.height = std::max(owner.height, owner.query->height + 1);
  if (owner.height > kTallestExpression) throw error::tooComplex();
  tokens_.expectClosing(clause_);
}

}  // namespace jetsql
