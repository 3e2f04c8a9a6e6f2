#include "platform/jetsql/writing/ExpressionWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/writing/CallWriter.h"
#include "platform/jetsql/writing/QueryWriter.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

using Kind = ExpressionKind;

constexpr std::size_t kMostArguments = 100;

struct Symbol {
  Operator op;
  std::string_view text;
};
/// The operators that are SQLite's too.
constexpr std::array<Symbol, 11> kSymbols{{{Operator::Or, " OR "},
                                           {Operator::And, " AND "},
                                           {Operator::Equal, " = "},
                                           {Operator::NotEqual, " <> "},
                                           {Operator::Less, " < "},
                                           {Operator::LessOrEqual, " <= "},
                                           {Operator::Greater, " > "},
                                           {Operator::GreaterOrEqual, " >= "},
                                           {Operator::Add, " + "},
                                           {Operator::Subtract, " - "},
                                           {Operator::Multiply, " * "}}};

std::string_view symbol(Operator op) {
  return std::ranges::find(kSymbols, op, &Symbol::op)->text;
}

/// True for expressions whose value in SQLite is a truth value.
bool isTruth(const BoundExpression& expression) {
  return isTest(expression.kind, expression.op) ||
         (expression.kind == Kind::Call &&
          expression.function->writing == Function::Writing::NullTest);
}

/// True where SQLite's own operator can be used for `+`.
bool addsNumbers(const BoundExpression& expression) {
  return expression.type != Type::Any && !isTextual(expression.type);
}

std::string numberText(double number) {
  std::array<char, 40> digits{};
  if (std::trunc(number) == number && std::fabs(number) <= 2147483648.0) {
    return std::to_string(static_cast<std::int64_t>(number));
  }
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                 std::chars_format::scientific);
  return {digits.data(), end.ptr};
}

std::string inParentheses(bool negated, const std::string& condition) {
  return (negated ? "(NOT " : "(") + condition + ")";
}

/// True where the written text of an amount results in ten-thousandths without a conversion.
bool isExact(const BoundExpression& amount) {
  if (amount.kind == Kind::Binary) {
    return amount.op == Operator::Add || amount.op == Operator::Subtract;
  }
  return amount.kind != Kind::Call ||
         (amount.function->writing != Function::Writing::Plain && amount.function->target != "avg");
}

/// True for what is exact in ten-thousandths: amounts, integers, numbers of four decimals.
bool isAmount(const BoundExpression& expression) {
  if (expression.type <= Type::Currency) return true;
  constexpr double kMost = 1e11;
  const double number = expression.number;
  return expression.kind == Kind::Number && std::fabs(number) < kMost &&
         std::nearbyint(number * runtime::Currency::kOne) / runtime::Currency::kOne == number;
}

bool areDecimals(Type a, Type b) {
  return a == Type::Decimal && b == Type::Decimal;
}

/// A written decimal as its plain digits.
std::string decimalDigits(const std::string& value) {
  return "substr(" + value + ", " + std::to_string(kDecimalKey + 1) + ")";
}

/// True where these compare as amounts, and not as plain numbers.
bool areAmounts(const std::vector<BoundPtr>& operands) {
  return std::ranges::all_of(operands, [](const BoundPtr& each) { return isAmount(*each); }) &&
         std::ranges::any_of(operands,
                             [](const BoundPtr& each) { return each->type == Type::Currency; });
}

}  // namespace

Comparing comparing(Type a, Type b) {
  if (a == Type::Null || b == Type::Null) return Comparing::Null;
  if (isNumeric(a) && isNumeric(b)) return Comparing::Plain;
  if (isTextual(a) && isTextual(b)) return Comparing::Texts;
  const bool hasGuid = a == Type::Guid || b == Type::Guid;
  if (hasGuid && (isTextual(a) || isTextual(b))) return Comparing::GuidText;
  if (a == b && (hasGuid || a == Type::Binary)) return Comparing::Plain;
  const bool hasBytes = hasGuid || a == Type::Binary || b == Type::Binary;
  if (hasBytes || (a != Type::Any && b != Type::Any)) throw error::providerMismatch();
  // Where only the rows tell the types, numbers sort before texts.
  return Comparing::Texts;
}

std::string converted(const std::string& value, Type from, Type to) {
  if (from == Type::Decimal && to != from) return "CAST(" + decimalDigits(value) + " AS REAL)";
  if ((from == Type::Currency) == (to == Type::Currency)) return value;
  return "(" + value + (to == Type::Currency ? " * 10000)" : " / 10000.0)");
}

std::string collated(const std::string& value, Type type) {
  return isTextual(type) || type == Type::Any ? value + " COLLATE " + kCollation : value;
}

std::string ExpressionWriter::compared(const BoundExpression& expression) {
  return collated(value(expression), expression.type);
}

std::string ExpressionWriter::plainAmong(const BoundExpression& expression,
                                         const std::vector<BoundPtr>& operands) {
  if (areAmounts(operands)) return amount(expression);
  const bool allDecimals = std::ranges::all_of(
      operands, [](const BoundPtr& each) { return areDecimals(each->type, each->type); });
  return allDecimals ? value(expression) : plain(expression);
}

std::string ExpressionWriter::comparedAmong(const BoundExpression& expression,
                                            const std::vector<BoundPtr>& operands) {
  return collated(plainAmong(expression, operands), expression.type);
}

std::string ExpressionWriter::sorted(const BoundExpression& expression) {
  // SQLite would take an integer, with or without a sign, for a column's index.
  const bool mayBeIndex = (expression.kind >= Kind::Boolean && expression.kind <= Kind::Date) ||
                          expression.op == Operator::Negate;
  return mayBeIndex ? "(" + value(expression) + " + 0)" : compared(expression);
}

std::string ExpressionWriter::asText(const BoundExpression& expression) {
  if (expression.type == Type::Decimal) return decimalDigits(value(expression));
  std::string text = plain(expression);
  if (expression.type == Type::Date) return writer_.call("jet_date_text", {text});
  if (expression.type == Type::Single) return writer_.call("jet_single_text", {text});
  if (expression.type == Type::Guid) return writer_.call("jet_guid_text", {text});
  if (expression.type == Type::Binary) throw error::providerMismatch();
  return text;
}

std::string ExpressionWriter::asNumber(const BoundExpression& expression) {
  if (isNumeric(expression.type)) return plain(expression);
  if (expression.type == Type::Guid || expression.type == Type::Binary)
    throw error::providerMismatch();
  return writer_.call("jet_number", {value(expression)});
}

// An alias may repeat an expression many times, so the length is checked at each level.
std::string ExpressionWriter::value(const BoundExpression& expression) {
  std::string text = checked(written(expression));
  if (expression.type != Type::Currency || isExact(expression)) return text;
  return writer_.call("jet_ten_thousandths", {text});
}

std::string ExpressionWriter::plain(const BoundExpression& expression) {
  return converted(value(expression), expression.type, Type::Double);
}

std::string ExpressionWriter::valueAs(const BoundExpression& expression, Type type) {
  if (type == Type::Currency) return amount(expression);
  return type == Type::Decimal ? value(expression) : plain(expression);
}

std::string ExpressionWriter::amount(const BoundExpression& expression) {
  if (expression.kind == Kind::Number && expression.type != Type::Currency) {
    return std::to_string(std::llround(expression.number * runtime::Currency::kOne));
  }
  return converted(value(expression), expression.type, Type::Currency);
}

std::string ExpressionWriter::written(const BoundExpression& expression) {
  const Kind kind = expression.kind;
  if (isTruth(expression)) return "(- " + condition(expression) + ")";
  if (kind == Kind::Null) return "NULL";
  if (kind >= Kind::Boolean && kind <= Kind::Date) return numberText(expression.number);
  if (kind == Kind::Text) return writer_.parameter(expression.text);
  if (kind == Kind::Column) return writer_.column(*expression.source, expression.column);
  if (kind == Kind::Unary || kind == Kind::Binary) return operatorValue(expression);
  return kind == Kind::Scalar ? scalarQuery(expression) : writeCall(*this, expression);
}

std::string ExpressionWriter::condition(const BoundExpression& expression) {
  if (isTruth(expression)) return checked(testCondition(expression));
  if (expression.kind == Kind::Call && expression.function->writing == Function::Writing::Iif) {
    return checked(writeIif(*this, expression,
                            [this](const BoundExpression& side) { return condition(side); }));
  }
  return "(" + asNumber(expression) + " <> 0)";
}

std::string ExpressionWriter::testCondition(const BoundExpression& expression) {
  const auto& arguments = expression.arguments;
  const Kind kind = expression.kind;
  if (kind == Kind::Like || kind == Kind::Alike) {
    return inParentheses(expression.negated,
                         writer_.call(kind == Kind::Like ? "jet_like" : "jet_alike",
                                      {asText(*arguments[0]), asText(*arguments[1])}));
  }
  if (kind == Kind::Between || kind == Kind::InList) return comparison(expression);
  if (kind >= Kind::InQuery && kind <= Kind::Quantified) return subqueryCondition(expression);
  if (kind == Kind::Unary || kind == Kind::Binary) {
    return isLogical(expression.op) ? logical(expression) : comparison(expression);
  }
  return "(" + value(*arguments[0]) + (expression.negated ? " IS NOT NULL)" : " IS NULL)");
}

std::string ExpressionWriter::operatorValue(const BoundExpression& expression) {
  const auto& arguments = expression.arguments;
  const Operator op = expression.op;
  const bool isAmount = expression.type == Type::Currency;
  if (op == Operator::Concatenate) return chain(expression, &ExpressionWriter::asText);
  if (op == Operator::Negate) {
    return "(- " + (isAmount ? value(*arguments[0]) : asNumber(*arguments[0])) + ")";
  }
  if (op == Operator::Add && isTextual(expression.type)) {
    return "(" + value(*arguments[0]) + " || " + value(*arguments[1]) + ")";
  }
  if (op == Operator::Add && expression.type == Type::Any) {
    return writer_.call("jet_plus", {plain(*arguments[0]), plain(*arguments[1])});
  }
  if (op == Operator::Add || op == Operator::Subtract || op == Operator::Multiply) {
    return chain(expression, isAmount && op != Operator::Multiply ? &ExpressionWriter::amount
                                                                  : &ExpressionWriter::asNumber);
  }
  const std::string_view function = op == Operator::Divide          ? "jet_divide"
                                    : op == Operator::IntegerDivide ? "jet_intdivide"
                                    : op == Operator::Modulo        ? "jet_modulo"
                                                                    : "jet_power";
  return writer_.call(function, {asNumber(*arguments[0]), asNumber(*arguments[1])});
}

/// A chain of one operator as a flat list of operands, since SQLite's parser accepts few levels.
std::string ExpressionWriter::chain(const BoundExpression& expression,
                                    std::string (ExpressionWriter::*form)(const BoundExpression&)) {
  std::vector<const BoundExpression*> operands;
  const BoundExpression* first = &expression;
  do {
    operands.push_back(first->arguments[1].get());
    first = first->arguments[0].get();
  } while (
      first->kind == Kind::Binary && first->op == expression.op &&
      (first->op != Operator::Add || addsNumbers(*first)) &&
      (first->type != Type::Currency || (expression.type == Type::Currency && isExact(*first))));
  std::vector<std::string> pieces{(this->*form)(*first)};
  std::ranges::reverse(operands);
  for (const BoundExpression* operand : operands) {
    if (expression.op == Operator::Concatenate && pieces.size() == kMostArguments) {
      pieces = {writer_.call("jet_concat", pieces)};
    }
    pieces.push_back((this->*form)(*operand));
  }
  if (expression.op == Operator::Concatenate) return writer_.call("jet_concat", pieces);
  return "(" + joined(pieces, symbol(expression.op)) + ")";
}

std::string ExpressionWriter::logical(const BoundExpression& expression) {
  const auto& arguments = expression.arguments;
  const Operator op = expression.op;
  if (op == Operator::Not) return "(NOT " + condition(*arguments[0]) + ")";
  if (op == Operator::And || op == Operator::Or) {
    return chain(expression, &ExpressionWriter::condition);
  }
  if (op == Operator::Imp) {
    return "((NOT " + condition(*arguments[0]) + ") OR " + condition(*arguments[1]) + ")";
  }
  return inParentheses(op == Operator::Eqv,
                       "(" + condition(*arguments[0]) + " <> " + condition(*arguments[1]) + ")");
}

/// The comparison of the first operand with the others, which are one value, two bounds or a list.
std::string ExpressionWriter::comparison(const BoundExpression& expression) {
  const auto& arguments = expression.arguments;
  bool hasNull = false;
  bool isGuidText = false;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const Comparing way = comparing(arguments[0]->type, arguments[i]->type);
    hasNull = hasNull || way == Comparing::Null;
    isGuidText = isGuidText || way == Comparing::GuidText;
  }
  if (hasNull && expression.kind != Kind::InList) return "NULL";
  const auto operand = [&](const BoundPtr& each) {
    return isGuidText ? asText(*each) : plainAmong(*each, arguments);
  };
  const auto compared = [&](const BoundPtr& each) {
    return collated(operand(each), isGuidText ? Type::Any : each->type);
  };
  std::vector<std::string> others;
  for (std::size_t i = 1; i < arguments.size(); ++i) others.push_back(compared(arguments[i]));
  if (expression.kind == Kind::Binary) {
    // One collated side is enough. SQLite calculates a collated constant even where it isn't
    // needed.
    return "(" + operand(arguments[0]) + std::string(symbol(expression.op)) + others[0] + ")";
  }
  const std::string first = compared(arguments[0]);
  if (expression.kind == Kind::InList) {
    return inParentheses(expression.negated, first + " IN (" + joined(others, ", ") + ")");
  }
  // The bounds may come in either order.
  return inParentheses(expression.negated, first + " BETWEEN " + writer_.call("min", others) +
                                               " AND " + writer_.call("max", others));
}

std::string ExpressionWriter::subqueryCondition(const BoundExpression& expression) {
  const BoundQuery& inner = *expression.query;
  if (expression.kind == Kind::Exists) return "EXISTS (" + writeQuery(writer_, inner, {}) + ")";
  const BoundExpression& tested = *expression.arguments[0];
  const Type type = inner.columns[0].type;
  const Comparing how = comparing(tested.type, type);
  const bool isGuidText = how == Comparing::GuidText;
  const bool comparesExactly =
      areDecimals(type, tested.type) || (type == Type::Currency && isAmount(tested));
  std::string operand = "NULL";
  if (isGuidText) {
    operand = asText(tested);
  } else if (how != Comparing::Null) {
    operand = valueAs(tested, comparesExactly ? type : Type::Double);
  }
  if (how != Comparing::Plain) operand = collated(operand, Type::Any);
  std::string rows = "(" + writeQuery(writer_, inner, {.columns = {0}}) + ")";
  if (!comparesExactly && (type == Type::Currency || type == Type::Decimal)) {
    rows = "(SELECT " + converted("c0", type, Type::Double) + " AS c0 FROM " + rows + ")";
  }
  if (expression.kind == Kind::InQuery && !isGuidText) {
    return "(" + operand + (expression.negated ? " NOT IN " : " IN ") + rows + ")";
  }
  // The test runs for each row of the subquery.
  const std::string name = writer_.freshName();
  const std::string column =
      isGuidText ? writer_.call("jet_guid_text", {name + ".c0"}) : name + ".c0";
  const bool isQuantified = expression.kind == Kind::Quantified;
  const std::string test = "(" + operand +
                           std::string(symbol(isQuantified ? expression.op : Operator::Equal)) +
                           column + ")";
  // The rows that decide are those for which the test is true, or with All false; without such a
  // row, one for which it is null makes the result null.
  const std::string decides = expression.every ? "min(t) = 0 THEN 0" : "max(t) = 1 THEN 1";
  return inParentheses(expression.negated,
                       "SELECT CASE WHEN " + decides + " WHEN count(*) > count(t) THEN NULL ELSE " +
                           (expression.every ? "1" : "0") + " END FROM (SELECT " + test +
                           " AS t FROM " + rows + " AS " + name + ")");
}

/// A subquery's one value; more than one row is an error.
std::string ExpressionWriter::scalarQuery(const BoundExpression& expression) {
  const std::string name = writer_.freshName();
  return "(SELECT " + writer_.call("jet_single", {name + ".c0"}) + " FROM (" +
         writeQuery(writer_, *expression.query, {.columns = {0}}) + ") AS " + name + ")";
}

}  // namespace jetsql
