#include "platform/jetsql/binding/ExpressionBinder.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/binding/QueryBinder.h"
#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/DepthGuard.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/syntax/Token.h"

namespace jetsql {
namespace {

using Kind = ExpressionKind;

/// The local time as a date.
double localNow() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm parts{};
  localtime_r(&now, &parts);
  return daysFromCivil({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
                        parts.tm_min, parts.tm_sec});
}

/// Date, Time and Now return the same value throughout a statement: they become date literals.
BoundPtr moment(std::u16string_view function) {
  const double now = localNow();
  const double day = std::floor(now);
  BoundExpression made{{.kind = Kind::Date, .number = now}};
  made.type = Type::Date;
  if (sameWord(function, u"DATE")) made.number = day;
  if (sameWord(function, u"TIME")) made.number = now - day;
  return std::make_shared<const BoundExpression>(std::move(made));
}

Type calculatedType(Operator op, Type first, Type second) {
  if (op == Operator::Concatenate) {
    return commonType(first, second) == Type::Memo ? Type::Memo : Type::Text;
  }
  if (op == Operator::IntegerDivide || op == Operator::Modulo) return Type::Long;
  if (op == Operator::Divide || op == Operator::Power) return Type::Double;
  if (op == Operator::Add && isTextual(first) && isTextual(second)) {
    return commonType(first, second);
  }
  const Type type = arithmeticType(first, second);
  const bool isNumber = op == Operator::Multiply || (first == second && op == Operator::Subtract);
  return type == Type::Date && isNumber ? Type::Double : type;
}

Type operatorType(const BoundExpression& expression) {
  const Kind kind = expression.kind;
  if (kind == Kind::Null) return Type::Null;
  if (kind == Kind::Integer) return Type::Long;
  if (kind == Kind::Number) return Type::Double;
  if (kind == Kind::Date) return Type::Date;
  if (kind == Kind::Text) return Type::Text;
  if (kind == Kind::Scalar) return expression.query->columns[0].type;
  if (kind == Kind::Boolean || isTest(kind, expression.op)) return Type::Boolean;
  const Type first = expression.arguments[0]->type;
  if (expression.op == Operator::Negate) {
    return first == Type::Boolean ? Type::Integer : arithmeticType(first, first);
  }
  return calculatedType(expression.op, first, expression.arguments[1]->type);
}

/// The common type of every `step`-th argument, beginning with `first`.
Type commonTypeOf(const std::vector<BoundPtr>& arguments, std::size_t first, std::size_t step) {
  Type type = Type::Null;
  for (std::size_t i = first; i < arguments.size(); i += step) {
    type = commonType(type, arguments[i]->type);
  }
  return type;
}

/// The type of a value calculated from one of that type: scaled decimals become plain numbers.
Type calculatedFrom(Type type) {
  return type == Type::Decimal ? Type::Double : type;
}

Type callType(const Function& function, const std::vector<BoundPtr>& arguments) {
  using W = Function::Writing;
  const W writing = function.writing;
  if (writing == W::Iif || writing == W::Choose) return commonTypeOf(arguments, 1, 1);
  if (writing == W::Switch) return commonTypeOf(arguments, 1, 2);
  if (writing == W::Fallback) {
    if (arguments.size() == 2) return commonTypeOf(arguments, 0, 1);
    // Without a second argument, null becomes 0 where a number is expected, else the empty text.
    return arguments[0]->type == Type::Null ? Type::Text : calculatedFrom(arguments[0]->type);
  }
  if (writing == W::Sum) {
    return arguments[0]->type == Type::Currency ? Type::Currency : Type::Double;
  }
  if (function.result == Function::Result::Fixed) return function.type;
  const Type type = arguments[0]->type;
  if (function.isAggregate()) return type;
  return isNumeric(type) || type == Type::Null ? calculatedFrom(type) : function.type;
}

void addArgument(BoundExpression& made, BoundPtr argument) {
  made.hasAggregate = made.hasAggregate || argument->hasAggregate;
  made.arguments.push_back(std::move(argument));
}

bool holds(const BoundFrom& item, const Source* source) {
  return item.source == source || std::ranges::any_of(item.sides, [source](const BoundFrom& side) {
           return holds(side, source);
         });
}

}  // namespace

BoundPtr columnOf(const Source& source, std::size_t column, std::u16string written) {
  BoundExpression made{{.kind = Kind::Column, .text = std::move(written)}};
  made.type = source.columns[column].type;
  made.source = &source;
  made.column = static_cast<int>(column);
  return std::make_shared<const BoundExpression>(std::move(made));
}

BoundPtr ExpressionBinder::bind(const ParsedExpression& expression) const {
  const DepthGuard depth(queries_.depth(), kDeepestBinding);
  if (expression.kind == Kind::Column) return bindColumn(expression);
  if (expression.kind == Kind::Call) return bindCall(expression);
  BoundExpression made{expression.node()};
  for (const ParsedExpression& each : expression.arguments) {
    addArgument(made, bind(each));
  }
  if (expression.query) {
    made.query = queries_.bindWithin(*expression.query, scope_);
    if (made.kind != Kind::Exists && made.query->columns.size() != 1) {
      throw error::subqueryColumns();
    }
  }
  made.type = operatorType(made);
  return std::make_shared<const BoundExpression>(std::move(made));
}

BoundPtr ExpressionBinder::bindColumn(const ParsedExpression& expression) const {
  for (const Scope* each = &scope_; each != nullptr; each = each->outer) {
    if (BoundPtr found = findColumn(expression, *each)) return found;
    if (expression.path.size() != 1) continue;
    for (const OutputColumn& column : each->query.columns) {
      if (!jet::sameName(column.name, expression.path[0])) continue;
      if (column.expression->hasAggregate) requireAggregatesAllowed(column.name);
      return column.expression;
    }
  }
  throw error::missingParameter();
}

/// The column of a source that the path names. Its last part names the column; if no column
/// matches, the path may be the name of a column that contains a dot.
BoundPtr ExpressionBinder::findColumn(const ParsedExpression& expression,
                                      const Scope& scope) const {
  const auto& path = expression.path;
  const auto search = [&](std::u16string_view table, std::u16string_view column) {
    return searchColumn(expression, scope, table, column);
  };
  BoundPtr found = search(pathText({path.begin(), path.end() - 1}), path.back());
  if (!found && path.size() > 1) found = search({}, pathText(path));
  if (!found && path.size() > 2)
    found = search(path.front(), pathText({path.begin() + 1, path.end()}));
  return found;
}

BoundPtr ExpressionBinder::searchColumn(const ParsedExpression& expression, const Scope& scope,
                                        std::u16string_view table,
                                        std::u16string_view column) const {
  BoundPtr found;
  bool isOutside = false;
  for (const auto& source : scope.query.select->sources) {
    if (!table.empty() && !jet::sameName(source->name, table)) continue;
    for (std::size_t i = 0; i < source->columns.size(); ++i) {
      if (!jet::sameName(source->columns[i].name, column)) continue;
      if (scope.join != nullptr && !holds(*scope.join, source.get())) {
        isOutside = true;
        continue;
      }
      if (found) throw error::ambiguousColumn(pathText(expression.path));
      found = columnOf(*source, i, expression.path.back());
    }
  }
  if (!found && isOutside) throw error::unsupportedJoin();
  return found;
}

void ExpressionBinder::requireAggregatesAllowed(std::u16string_view name) const {
  if (clause_ == Clause::Plain) return;
  throw error::aggregateForbidden(clause_ == Clause::Where ? u"WHERE clause" : u"expression", name);
}

BoundPtr ExpressionBinder::bindCall(const ParsedExpression& expression) const {
  const Function* function = functionNamed(expression.text);
  if (function == nullptr) throw error::undefinedFunction(expression.text);
  const auto count = static_cast<int>(expression.arguments.size());
  if (count < function->fewest || count > function->most) {
    throw error::argumentCount(expression.text);
  }
  if (function->writing == Function::Writing::Moment) return moment(expression.text);
  if (function->isAggregate()) {
    requireAggregatesAllowed(expression.text);
    scope_.sawAggregate = true;
  }
  BoundExpression made{expression.node()};
  made.function = function;
  made.hasAggregate = function->isAggregate();
  const ExpressionBinder arguments(queries_, scope_,
                                   function->isAggregate() ? Clause::InAggregate : clause_);
  for (const ParsedExpression& each : expression.arguments) {
    addArgument(made, arguments.bind(each));
  }
  made.type = callType(*function, made.arguments);
  return std::make_shared<const BoundExpression>(std::move(made));
}

}  // namespace jetsql
