#include "platform/jetsql/binding/RuleCondition.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/syntax/ExpressionParser.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"

namespace jetsql {
namespace {

/// Longest rule that is accepted, in 16-bit units.
constexpr std::size_t kLongestRule = 2048;
constexpr std::array<std::u16string_view, 5> kJoiningWords{u"AND", u"OR", u"XOR", u"EQV", u"IMP"};
/// What a term without its left operand begins with.
constexpr std::array<std::u16string_view, 11> kTests{
    u"=", u"<>", u"<", u"<=", u">", u">=", u"IN", u"LIKE", u"ALIKE", u"BETWEEN", u"IS"};

bool namesColumn(const ParsedExpression& expression) {
  return expression.kind == ExpressionKind::Column ||
         std::ranges::any_of(expression.arguments, namesColumn);
}

/// True for a term that is a condition by itself; false for a value.
bool isCondition(const ParsedExpression& term) {
  return isTest(term.kind, term.op) || namesColumn(term);
}

/// The index of the token that follows the parenthesis matching the one at `open`.
std::size_t afterGroup(const std::vector<Token>& tokens, std::size_t open) {
  int depth = 0;
  std::size_t at = open;
  for (; tokens[at].kind != Token::Kind::End; ++at) {
    if (tokens[at].is(u"(")) ++depth;
    if (tokens[at].is(u")") && --depth == 0) return at + 1;
  }
  return at;
}

/// True at a parenthesis around terms; one around a part of a value is followed by an operator.
bool opensGroup(const std::vector<Token>& tokens, std::size_t at) {
  if (!tokens[at].is(u"(")) return false;
  const Token& next = tokens[afterGroup(tokens, at)];
  return next.kind == Token::Kind::End || next.is(u")") || next.isAnyOf(kJoiningWords);
}

/// The index of the token that follows the term at `at`.
std::size_t afterTerm(const std::vector<Token>& tokens, std::size_t at) {
  bool between = false;
  while (tokens[at].kind != Token::Kind::End && !tokens[at].is(u")")) {
    if (tokens[at].is(u"BETWEEN")) {
      between = true;
    } else if (tokens[at].is(u"AND") && between) {
      between = false;
    } else if (tokens[at].isAnyOf(kJoiningWords)) {
      break;
    }
    at = tokens[at].is(u"(") ? afterGroup(tokens, at) : at + 1;
  }
  return at;
}

/// A column's criterion as a full expression: each term gets the left operand that it lacks.
std::u16string completed(std::u16string_view criterion, const std::u16string& column) {
  const std::vector<Token> tokens = tokenize(criterion);
  std::u16string full(criterion);
  for (std::size_t at = 0; tokens[at].kind != Token::Kind::End;) {
    const Token& first = tokens[at];
    if (first.isAnyOf(kJoiningWords) || first.is(u"NOT") || first.is(u")") ||
        opensGroup(tokens, at)) {
      ++at;
      continue;
    }
    at = afterTerm(tokens, at);
    const std::size_t position = first.begin + (full.size() - criterion.size());
    const auto term = criterion.substr(first.begin, tokens[at - 1].end - first.begin);
    if (first.isAnyOf(kTests)) {
      full.insert(position, u"[" + column + u"] ");
    } else if (!isCondition(parseExpression(term))) {
      full.insert(position, u"[" + column + u"] = ");
    }
  }
  return full;
}

ParsedExpression literal(ExpressionKind kind, double number, std::u16string text = {}) {
  return {{.kind = kind, .number = number, .text = std::move(text)}};
}

/// A value of a row as a literal.
template <class T>
ParsedExpression literalOf(const T& value) {
  using Kind = ExpressionKind;
  if constexpr (std::same_as<T, runtime::Null>) {
    return {};
  } else if constexpr (std::same_as<T, bool>) {
    return literal(Kind::Boolean, value ? -1 : 0);
  } else if constexpr (std::integral<T>) {
    return literal(Kind::Integer, value);
  } else if constexpr (std::floating_point<T>) {
    return literal(Kind::Number, value);
  } else if constexpr (std::same_as<T, runtime::Currency>) {
    // As a number it would lose its type, and with it the exact calculation.
    ParsedExpression made = literal(Kind::Call, 0, u"CCur");
    made.arguments.push_back(literal(Kind::Number, value.toDouble()));
    made.height = 2;
    return made;
  } else if constexpr (std::same_as<T, runtime::Date>) {
    return literal(Kind::Date, value.days);
  } else if constexpr (std::same_as<T, runtime::Decimal>) {
    return literal(Kind::Number, runtime::leadingNumber(value.digits));
  } else if constexpr (std::same_as<T, runtime::Binary>) {
    // Hexadecimal digits are enough: a rule can only test bytes for Null and compare them with
    // other bytes.
    std::u16string digits;
    for (const std::uint8_t byte : value) digits += runtime::hexDigits(byte, 2);
    return literal(Kind::Text, 0, std::move(digits));
  } else {
    return literal(Kind::Text, 0, runtime::Variant(value).toText());
  }
}

/// The expression with its columns replaced by the row's values.
ParsedExpression filledIn(ParsedExpression expression, const jet::ValidationRule& rule,
                          const jet::NewRow& row) {
  if (expression.query) throw error::queryInRule();
  for (ParsedExpression& argument : expression.arguments) {
    argument = filledIn(std::move(argument), rule, row);
  }
  if (expression.kind != ExpressionKind::Column) return expression;
  const std::vector<std::u16string>& path = expression.path;
  const bool isOwn = path.size() == 1 || (path.size() == 2 && jet::sameName(path[0], rule.table));
  const auto value = isOwn ? row.value(path.back()) : std::nullopt;
  if (!value) throw error::unknownRuleColumn(pathText(path));
  return std::visit([](const auto& held) { return literalOf(held); }, value->get());
}

}  // namespace

ParsedQuery violationQuery(const jet::ValidationRule& rule, const jet::NewRow& row) {
  if (rule.expression.size() > kLongestRule) throw error::ruleTooLong();
  const std::u16string full =
      rule.column.empty() ? rule.expression : completed(rule.expression, rule.column);
  ParsedItem one;
  one.expression = literal(ExpressionKind::Integer, 1);
  ParsedQuery query;
  query.select.emplace();
  query.select->items.push_back(std::move(one));
  query.select->where = unary(Operator::Not, filledIn(parseExpression(full), rule, row));
  return query;
}

}  // namespace jetsql
