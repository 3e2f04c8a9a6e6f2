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

bool namesColumn(const ParsedExpression& expression) {
  return expression.kind == ExpressionKind::Column ||
         std::ranges::any_of(expression.arguments, namesColumn);
}

/// True for a term that is a condition by itself; false for a value.
bool isCondition(const ParsedExpression& term) {
  return isTest(term.kind, term.op) || namesColumn(term);
}

/// Turns a column's criterion into a full expression: each term gets the left operand that it
/// lacks.
class Criterion {
 public:
  Criterion(std::u16string_view text, std::u16string_view column)
      : text_(text), tokens_(tokenize(text)), column_(u"[" + std::u16string(column) + u"]") {}

  std::u16string completed() {
    while (!atEnd()) {
      if (isAnyWord(here(), kJoiningWords) || here().isWord(u"NOT") || here().is(u")") ||
          opensGroup())
        ++position_;
      else
        term();
    }
    return full_.append(text_.substr(copied_));
  }

 private:
  const Token& here() const { return tokens_[position_]; }
  bool atEnd() const { return here().kind == Token::Kind::End; }

  /// The token that follows the parenthesis matching the one at `open`.
  std::size_t afterGroup(std::size_t open) const {
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
    const Token& next = tokens_[afterGroup(position_)];
    return next.kind == Token::Kind::End || next.is(u")") || isAnyWord(next, kJoiningWords);
  }

  std::size_t endOfTerm() const {
    bool between = false;
    std::size_t at = position_;
    while (tokens_[at].kind != Token::Kind::End && !tokens_[at].is(u")")) {
      if (tokens_[at].isWord(u"BETWEEN"))
        between = true;
      else if (tokens_[at].isWord(u"AND") && between)
        between = false;
      else if (isAnyWord(tokens_[at], kJoiningWords))
        break;
      at = tokens_[at].is(u"(") ? afterGroup(at) : at + 1;
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
      if (!isCondition(parseExpression(value))) full_.append(column_).append(u" = ");
    }
    position_ = end;
  }

  std::u16string_view text_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  std::u16string column_;
  std::u16string full_;
  std::size_t copied_ = 0;  ///< units of `text_` that `full_` has so far
};

ParsedExpression literal(ExpressionKind kind, double number) {
  ParsedExpression made;
  made.kind = kind;
  made.number = number;
  return made;
}

/// A value of a row as a literal.
struct Literal {
  ParsedExpression operator()(const runtime::Null&) const { return {}; }
  ParsedExpression operator()(bool value) const {
    return literal(ExpressionKind::Boolean, value ? -1 : 0);
  }
  template <std::integral Integer>
  ParsedExpression operator()(Integer value) const {
    return literal(ExpressionKind::Integer, value);
  }
  template <std::floating_point Number>
  ParsedExpression operator()(Number value) const {
    return literal(ExpressionKind::Number, value);
  }
  ParsedExpression operator()(const runtime::Currency& value) const {
    // As a number it would lose its type, and with it the exact calculation.
    ParsedExpression made = literal(ExpressionKind::Call, 0);
    made.text = u"CCur";
    made.arguments.push_back(literal(ExpressionKind::Number, value.toDouble()));
    made.height = 2;
    return made;
  }
  ParsedExpression operator()(const runtime::Date& value) const {
    return literal(ExpressionKind::Date, value.days);
  }
  ParsedExpression operator()(const std::u16string& value) const {
    ParsedExpression made = literal(ExpressionKind::Text, 0);
    made.text = value;
    return made;
  }
  ParsedExpression operator()(const runtime::Guid& value) const {
    return (*this)(runtime::Variant(value).toText());
  }
  ParsedExpression operator()(const runtime::Decimal& value) const {
    return literal(ExpressionKind::Number, runtime::leadingNumber(value.digits));
  }
  /// Bytes as a text of their digits: a rule can test them for Null and compare them with others.
  ParsedExpression operator()(const runtime::Binary& value) const {
    std::u16string digits;
    for (const std::uint8_t byte : value) digits += runtime::hexDigits(byte, 2);
    return (*this)(digits);
  }
};

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
  return std::visit(Literal(), value->get());
}

}  // namespace

ParsedQuery violationQuery(const jet::ValidationRule& rule, const jet::NewRow& row) {
  if (rule.expression.size() > kLongestRule) throw error::ruleTooLong();
  const std::u16string full =
      rule.column.empty() ? rule.expression : Criterion(rule.expression, rule.column).completed();
  ParsedItem one;
  one.expression = literal(ExpressionKind::Integer, 1);
  ParsedQuery query;
  query.select.emplace();
  query.select->items.push_back(std::move(one));
  query.select->where = unary(Operator::Not, filledIn(parseExpression(full), rule, row));
  return query;
}

}  // namespace jetsql
