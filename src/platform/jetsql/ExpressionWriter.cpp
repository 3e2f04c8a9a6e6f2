#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Function.h"
#include "platform/jetsql/SqlWriter.h"

namespace jetsql {
namespace {

std::string_view symbol(Operator op) {
  switch (op) {
    case Operator::Or:
      return " OR ";
    case Operator::And:
      return " AND ";
    case Operator::Equal:
      return " = ";
    case Operator::NotEqual:
      return " <> ";
    case Operator::Less:
      return " < ";
    case Operator::LessOrEqual:
      return " <= ";
    case Operator::Greater:
      return " > ";
    case Operator::GreaterOrEqual:
      return " >= ";
    case Operator::Add:
      return " + ";
    case Operator::Subtract:
      return " - ";
    case Operator::Multiply:
      return " * ";
    default:
      return " ";
  }
}

/// True for expressions that SQLite's own truth values come from.
bool isTruth(const Expression& expression) {
  using Kind = Expression::Kind;
  switch (expression.kind) {
    case Kind::IsNull:
    case Kind::Like:
    case Kind::Between:
    case Kind::InList:
    case Kind::InQuery:
    case Kind::Exists:
    case Kind::Quantified:
      return true;
    case Kind::Unary:
    case Kind::Binary:
      return isLogical(expression.op) || isComparison(expression.op);
    case Kind::Call:
      return expression.function->writing == Function::Writing::NullTest;
    default:
      return false;
  }
}

constexpr std::size_t kMostArguments = 100;

}  // namespace

Comparing comparing(Type a, Type b) {
  if (a == Type::Null || b == Type::Null) return Comparing::Null;
  if (isNumeric(a) && isNumeric(b)) return Comparing::Numbers;
  if (isTextual(a) && isTextual(b)) return Comparing::Texts;
  const bool hasGuid = a == Type::Guid || b == Type::Guid;
  if (hasGuid && (isTextual(a) || isTextual(b))) return Comparing::GuidText;
  if (a == b && (hasGuid || a == Type::Binary)) return Comparing::Bytes;
  if (hasGuid || a == Type::Binary || b == Type::Binary) throw error::typeMismatch();
  if (a == Type::Any || b == Type::Any) return Comparing::Mixed;
  throw error::typeMismatch();
}

std::string SqlWriter::form(const Expression& expression, Form wanted, int part) {
  switch (wanted) {
    case Form::Value:
      return value(expression);
    case Form::Key:
      return key(expression);
    case Form::Exact:
      return exact(expression);
    case Form::RowId:
    case Form::RowKey:
      break;
  }
  const Expression& column = meant(expression);
  return reference(*column.source, {column.column, wanted, part});
}

bool SqlWriter::isGroupTerm(const Expression& expression) const {
  if (grouping_ == nullptr) return false;
  for (const auto& term : grouping_->groupBy) {
    if (sameExpression(*term, expression)) return true;
  }
  return false;
}

std::string SqlWriter::value(const Expression& expression) {
  const Expression& whole = meant(expression);
  if (!isGroupTerm(whole)) return plainValue(whole);
  const Select* grouping = std::exchange(grouping_, nullptr);
  std::string plain = plainValue(whole);
  grouping_ = grouping;
  // Texts of one group may be spelled in several ways.
  const bool spelled = isTextual(whole.type) || whole.type == Type::Any;
  return spelled ? call("jet_any", {plain}) : plain;
}

std::string SqlWriter::key(const Expression& expression) {
  const Expression& whole = meant(expression);
  if (!isTextual(whole.type) && whole.type != Type::Any) return value(whole);
  if (whole.kind == Expression::Kind::Text) return textKey(whole.text);
  if (whole.kind == Expression::Kind::Scalar) return scalarQuery(whole, Form::Key);
  const bool isColumn = whole.kind == Expression::Kind::Column;
  if (!isColumn && !isGroupTerm(whole)) return call("jet_key", {value(whole)});
  const Select* grouping = std::exchange(grouping_, nullptr);
  std::string plain = isColumn ? reference(*whole.source, {whole.column, Form::Key, 0})
                               : call("jet_key", {plainValue(whole)});
  grouping_ = grouping;
  return plain;
}

std::string SqlWriter::exact(const Expression& expression) {
  const Expression& whole = meant(expression);
  const bool isAmount = whole.type == Type::Currency || whole.type == Type::Decimal;
  if (!isAmount && !isTextual(whole.type)) return value(whole);
  if (whole.kind == Expression::Kind::Column && !isGroupTerm(whole)) {
    return reference(*whole.source, {whole.column, Form::Exact, 0});
  }
  if (whole.kind == Expression::Kind::Scalar) return scalarQuery(whole, Form::Exact);
  if (!isAmount) return value(whole);
  return call(whole.type == Type::Currency ? "jet_exact_currency" : "jet_exact_decimal",
              {value(whole)});
}

/// The value as what `&` and the text functions take.
std::string SqlWriter::asText(const Expression& expression) {
  switch (expression.type) {
    case Type::Date:
      return call("jet_date_text", {value(expression)});
    case Type::Single:
      return call("jet_single_text", {value(expression)});
    case Type::Guid:
      return call("jet_guid_text", {value(expression)});
    case Type::Binary:
      throw error::typeMismatch();
    default:
      return value(expression);
  }
}

std::string SqlWriter::asNumber(const Expression& expression) {
  if (isNumeric(expression.type)) return value(expression);
  if (expression.type == Type::Guid || expression.type == Type::Binary) throw error::typeMismatch();
  return call("jet_number", {value(expression)});
}

/// An expression as SQLite's truth value, where its terms can reach an index.
std::string SqlWriter::condition(const Expression& expression) {
  const Expression& whole = meant(expression);
  if (isGroupTerm(whole)) return "(" + value(whole) + " <> 0)";
  switch (whole.kind) {
    case Expression::Kind::IsNull: {
      return "(" + value(*whole.arguments[0]) + (whole.negated ? " IS NOT NULL)" : " IS NULL)");
    }
    case Expression::Kind::Like: {
      const std::string matched = call(whole.text == u"LIKE" ? "jet_like" : "jet_alike",
                                       {asText(*whole.arguments[0]), asText(*whole.arguments[1])});
      return whole.negated ? "(NOT " + matched + ")" : matched;
    }
    case Expression::Kind::Between:
      return between(whole);
    case Expression::Kind::InList:
      return inList(whole);
    case Expression::Kind::InQuery:
    case Expression::Kind::Exists:
    case Expression::Kind::Quantified:
      return subqueryCondition(whole);
    case Expression::Kind::Unary:
    case Expression::Kind::Binary:
      if (isLogical(whole.op)) return logical(whole);
      if (isComparison(whole.op)) {
        return comparison(whole.op, *whole.arguments[0], *whole.arguments[1]);
      }
      break;
    case Expression::Kind::Call:
      if (whole.function->writing == Function::Writing::NullTest) {
        return "(" + value(*whole.arguments[0]) + " IS NULL)";
      }
      if (whole.function->writing == Function::Writing::Choice) return choice(whole, true);
      break;
    default:
      break;
  }
  return "(" + asNumber(whole) + " <> 0)";
}

std::string SqlWriter::plainValue(const Expression& expression) {
  if (isTruth(expression)) return "(- " + condition(expression) + ")";
  switch (expression.kind) {
    case Expression::Kind::Null:
      return "NULL";
    case Expression::Kind::Boolean:
    case Expression::Kind::Number:
    case Expression::Kind::Date:
      return number(expression.number);
    case Expression::Kind::Text:
      return text(expression.text);
    case Expression::Kind::Column:
      return reference(*expression.source, {expression.column, Form::Value, 0});
    case Expression::Kind::Unary:
    case Expression::Kind::Binary:
      return operatorValue(expression);
    case Expression::Kind::Scalar:
      return scalarQuery(expression, Form::Value);
    case Expression::Kind::CountRows:
      return "count(*)";
    default:
      return callValue(expression);
  }
}

std::string SqlWriter::operatorValue(const Expression& expression) {
  const auto& arguments = expression.arguments;
  switch (expression.op) {
    case Operator::Concatenate:
      return concatenation(expression);
    case Operator::Negate:
      return "(- " + asNumber(*arguments[0]) + ")";
    case Operator::Add:
      if (isTextual(arguments[0]->type) && isTextual(arguments[1]->type)) {
        return "(" + value(*arguments[0]) + " || " + value(*arguments[1]) + ")";
      }
      if (expression.type == Type::Any) {
        return call("jet_plus", {value(*arguments[0]), value(*arguments[1])});
      }
      return chain(expression);
    case Operator::Subtract:
    case Operator::Multiply:
      return chain(expression);
    case Operator::Divide:
      return call("jet_divide", {asNumber(*arguments[0]), asNumber(*arguments[1])});
    case Operator::IntegerDivide:
      return call("jet_intdivide", {asNumber(*arguments[0]), asNumber(*arguments[1])});
    case Operator::Modulo:
      return call("jet_modulo", {asNumber(*arguments[0]), asNumber(*arguments[1])});
    default:
      return call("jet_power", {asNumber(*arguments[0]), asNumber(*arguments[1])});
  }
}

/// A chain of one operator in one pair of parentheses, since SQLite's parser is not deep.
std::string SqlWriter::chain(const Expression& expression) {
  std::vector<const Expression*> links;
  const Expression* first = &expression;
  while (first->kind == Expression::Kind::Binary && first->op == expression.op &&
         first->type != Type::Any && !isTextual(first->type) && !isGroupTerm(*first)) {
    links.push_back(first->arguments[1].get());
    first = first->arguments[0].get();
  }
  if (links.empty()) {
    links.push_back(expression.arguments[1].get());
    first = expression.arguments[0].get();
  }
  std::string whole = "(" + asNumber(*first);
  std::reverse(links.begin(), links.end());
  for (const Expression* link : links) {
    whole += symbol(expression.op);
    whole += asNumber(*link);
    checkLength(whole.size());
  }
  return whole + ")";
}

std::string SqlWriter::concatenation(const Expression& expression) {
  std::vector<const Expression*> links;
  const Expression* first = &expression;
  while (first->op == Operator::Concatenate && !isGroupTerm(*first)) {
    links.push_back(first->arguments[1].get());
    first = first->arguments[0].get();
  }
  std::vector<std::string> pieces{asText(*first)};
  std::reverse(links.begin(), links.end());
  for (const Expression* link : links) {
    if (pieces.size() == kMostArguments) pieces = {call("jet_concat", pieces)};
    pieces.push_back(asText(*link));
  }
  return call("jet_concat", pieces);
}

std::string SqlWriter::logical(const Expression& expression) {
  const auto& arguments = expression.arguments;
  switch (expression.op) {
    case Operator::Not:
      return "(NOT " + condition(*arguments[0]) + ")";
    case Operator::And:
    case Operator::Or:
      break;
    case Operator::Imp:
      return "((NOT " + condition(*arguments[0]) + ") OR " + condition(*arguments[1]) + ")";
    default: {
      const std::string differ =
          "(" + condition(*arguments[0]) + " <> " + condition(*arguments[1]) + ")";
      return expression.op == Operator::Xor ? differ : "(NOT " + differ + ")";
    }
  }
  std::vector<const Expression*> links;
  const Expression* first = &expression;
  while (first->kind == Expression::Kind::Binary && first->op == expression.op &&
         !isGroupTerm(*first)) {
    links.push_back(first->arguments[1].get());
    first = first->arguments[0].get();
  }
  std::string whole = "(" + condition(*first);
  std::reverse(links.begin(), links.end());
  for (const Expression* link : links) {
    whole += symbol(expression.op);
    whole += condition(*link);
    checkLength(whole.size());
  }
  return whole + ")";
}

std::string SqlWriter::comparison(Operator op, const Expression& a, const Expression& b) {
  const std::string sign(symbol(op));
  switch (comparing(a.type, b.type)) {
    case Comparing::Numbers:
    case Comparing::Bytes:
      return "(" + value(a) + sign + value(b) + ")";
    case Comparing::Texts:
      return "(" + key(a) + sign + key(b) + ")";
    case Comparing::GuidText:
      return "(" + call("jet_key", {asText(a)}) + sign + call("jet_key", {asText(b)}) + ")";
    case Comparing::Mixed:
      return "(" + call("jet_compare", {value(a), value(b)}) + sign + "0)";
    case Comparing::Null:
      break;
  }
  return "NULL";
}

std::string SqlWriter::between(const Expression& expression) {
  const Expression& tested = *expression.arguments[0];
  const Expression* low = &meant(*expression.arguments[1]);
  const Expression* high = &meant(*expression.arguments[2]);
  const auto isLiteral = [](const Expression& bound) {
    return bound.kind == Expression::Kind::Number || bound.kind == Expression::Kind::Date ||
           bound.kind == Expression::Kind::Text;
  };
  const std::string negation = expression.negated ? "NOT " : "";
  const Comparing first = comparing(tested.type, low->type);
  const Comparing second = comparing(tested.type, high->type);
  if (first == Comparing::Null || second == Comparing::Null) return "NULL";
  const bool isPlain = first == second && first != Comparing::Mixed && first != Comparing::GuidText;
  if (isPlain && isLiteral(*low) && isLiteral(*high)) {
    // Constant bounds are put in order here, so that an index can serve them.
    const bool isText = low->kind == Expression::Kind::Text;
    const bool swapped = isText ? jet::textKey(order_, low->text) > jet::textKey(order_, high->text)
                                : low->number > high->number;
    if (swapped) std::swap(low, high);
    const std::string range = key(tested) + " BETWEEN " + key(*low) + " AND " + key(*high);
    return "(" + negation + "(" + range + "))";
  }
  const auto comparable = [&](const Expression& each) {
    return first == Comparing::GuidText ? call("jet_key", {asText(each)}) : key(each);
  };
  return "(" + negation +
         call("jet_between", {comparable(tested), comparable(*low), comparable(*high)}) + ")";
}

std::string SqlWriter::inList(const Expression& expression) {
  const Expression& tested = *expression.arguments[0];
  bool isMixed = false;
  for (std::size_t i = 1; i < expression.arguments.size(); ++i) {
    const Comparing each = comparing(tested.type, expression.arguments[i]->type);
    isMixed = isMixed || each == Comparing::Mixed || each == Comparing::GuidText;
  }
  if (isMixed) {
    std::string whole = "(";
    for (std::size_t i = 1; i < expression.arguments.size(); ++i) {
      if (i > 1) whole += " OR ";
      whole += comparison(Operator::Equal, tested, *expression.arguments[i]);
      checkLength(whole.size());
    }
    whole += ")";
    return expression.negated ? "(NOT " + whole + ")" : whole;
  }
  std::string whole = "(" + key(tested) + (expression.negated ? " NOT IN (" : " IN (");
  for (std::size_t i = 1; i < expression.arguments.size(); ++i) {
    if (i > 1) whole += ", ";
    whole += key(*expression.arguments[i]);
    checkLength(whole.size());
  }
  return whole + "))";
}

std::string SqlWriter::subqueryCondition(const Expression& expression) {
  Query& inner = *expression.query;
  if (expression.kind == Expression::Kind::Exists) return "EXISTS (" + query(inner, {}) + ")";
  const Expression& tested = *expression.arguments[0];
  const Type type = inner.columns[0].type;
  const Comparing how = comparing(tested.type, type);
  if (how == Comparing::Null) return "NULL";
  const bool isMixed = how == Comparing::Mixed || how == Comparing::GuidText;
  if (expression.kind == Expression::Kind::InQuery && !isMixed) {
    return "(" + key(tested) + (expression.negated ? " NOT IN (" : " IN (") +
           query(inner, {{0, Form::Key, 0}}) + "))";
  }
  // The test is made for each row of the subquery in turn.
  const std::string name = "q" + std::to_string(fresh());
  const Operator op =
      expression.kind == Expression::Kind::InQuery ? Operator::Equal : expression.op;
  const std::string rows = "(" + query(inner, {{0, isMixed ? Form::Value : Form::Key, 0}}) + ")";
  std::string test;
  if (isMixed) {
    test = call("jet_compare", {value(tested), name + ".c0"}) + std::string(symbol(op)) + "0";
  } else {
    test = key(tested) + std::string(symbol(op)) + name + ".c0";
  }
  const std::string source = "EXISTS (SELECT 1 FROM " + rows + " AS " + name + " WHERE ";
  if (expression.every) return "(NOT " + source + "(" + test + ") IS NOT TRUE))";
  return std::string(expression.negated ? "(NOT " : "(") + source + test + "))";
}

/// A subquery's one value; more than one row is an error.
std::string SqlWriter::scalarQuery(const Expression& expression, Form wanted) {
  const std::string name = "q" + std::to_string(fresh());
  const std::string rows = query(*expression.query, {{0, wanted, 0}});
  return "(SELECT " + call("jet_single", {name + ".c0"}) + " FROM (" + rows + ") AS " + name + ")";
}

std::string SqlWriter::call(std::string_view function, const std::vector<std::string>& arguments) {
  if (function.starts_with("jet_")) out_.functions.emplace(function);
  std::string whole(function);
  whole += "(";
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i > 0) whole += ", ";
    whole += arguments[i];
  }
  checkLength(whole.size());
  return whole + ")";
}

std::string SqlWriter::text(const std::u16string& text) {
  return parameter({text, {}, false});
}

std::string SqlWriter::textKey(const std::u16string& text) {
  return parameter({{}, jet::textKey(order_, text), true});
}

std::string SqlWriter::parameter(Parameter parameter) {
  if (out_.parameters.size() >= 30'000) throw error::tooComplex();
  out_.parameters.push_back(std::move(parameter));
  return "?" + std::to_string(out_.parameters.size());
}

std::string SqlWriter::number(double number) {
  std::array<char, 40> digits{};
  const bool isWhole = std::trunc(number) == number && std::fabs(number) < 9.0e15;
  if (isWhole && std::fabs(number) <= 2147483648.0) {
    return std::to_string(static_cast<std::int64_t>(number));
  }
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                 std::chars_format::scientific);
  return {digits.data(), end.ptr};
}

void SqlWriter::checkLength(std::size_t length) const {
  if (length > kLongestTranslation) throw error::tooComplex();
}

}  // namespace jetsql
