#include <chrono>
#include <cmath>
#include <ctime>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/Binder.h"
#include "platform/jetsql/BinderDepth.h"
#include "platform/jetsql/DateText.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Function.h"
#include "platform/jetsql/Token.h"

namespace jetsql {
namespace {

/// The machine's own time as a date.
double localNow() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm parts{};
  localtime_r(&now, &parts);
  return daysFromCivil({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
                        parts.tm_min, parts.tm_sec});
}

/// Date, Time and Now give one value all through a statement: they become dates.
void becomeMoment(Expression& call) {
  const double now = localNow();
  const double day = std::floor(now);
  call.kind = Expression::Kind::Date;
  call.number = now;
  if (sameWord(call.text, u"DATE")) call.number = day;
  if (sameWord(call.text, u"TIME")) call.number = now - day;
  call.type = Type::Date;
  call.function = nullptr;
}

Type typeOfArgument(const Expression& expression, std::size_t argument) {
  return expression.arguments[argument]->type;
}

}  // namespace

void Binder::bindExpression(Expression& expression, Scope& scope, Place place) {
  const Depth depth(*this);
  switch (expression.kind) {
    case Expression::Kind::Column:
      return bindColumn(expression, scope);
    case Expression::Kind::Call:
      return bindCall(expression, scope, place);
    case Expression::Kind::CountRows:
      expression.function = functionNamed(u"COUNT");
      expression.type = Type::Long;
      if (place == Place::Where) {
        throw error::statement(u"Cannot have aggregate function in WHERE clause (Count(*)).");
      }
      scope.sawAggregate = true;
      return;
    default:
      break;
  }
  for (const auto& argument : expression.arguments) bindExpression(*argument, scope, place);
  if (expression.query) bindSubquery(expression, scope);
  expression.type = operatorType(expression);
}

Type Binder::operatorType(const Expression& expression) {
  switch (expression.kind) {
    case Expression::Kind::Null:
      return Type::Null;
    case Expression::Kind::Number:
      return expression.type;
    case Expression::Kind::Date:
      return Type::Date;
    case Expression::Kind::Text:
      return Type::Text;
    case Expression::Kind::Scalar:
      return expression.query->columns[0].type;
    case Expression::Kind::Unary:
    case Expression::Kind::Binary:
      break;
    default:
      return Type::Boolean;
  }
  if (isLogical(expression.op) || isComparison(expression.op)) return Type::Boolean;
  const Type first = typeOfArgument(expression, 0);
  if (expression.op == Operator::Negate) {
    return first == Type::Boolean ? Type::Integer : arithmeticType(first, first);
  }
  const Type second = typeOfArgument(expression, 1);
  switch (expression.op) {
    case Operator::Concatenate:
      return commonType(first, second) == Type::Memo ? Type::Memo : Type::Text;
    case Operator::Add:
      if (isTextual(first) && isTextual(second)) return commonType(first, second);
      return arithmeticType(first, second);
    case Operator::Subtract:
      if (first == Type::Date && second == Type::Date) return Type::Double;
      return arithmeticType(first, second);
    case Operator::Multiply: {
      const Type product = arithmeticType(first, second);
      return product == Type::Date ? Type::Double : product;
    }
    case Operator::IntegerDivide:
    case Operator::Modulo:
      return Type::Long;
    default:
      return Type::Double;
  }
}

void Binder::bindColumn(Expression& expression, Scope& scope) {
  for (Scope* each = &scope; each != nullptr; each = each->outer) {
    if (findColumn(expression, *each) || findAlias(expression, *each)) return;
  }
  throw error::missingParameter();
}

bool Binder::findColumn(Expression& expression, const Scope& scope) const {
  // The last part names the column; where that fits nothing, a column's own name may hold a dot.
  const auto& path = expression.path;
  const std::u16string whole = pathText(path);
  const std::u16string qualifier = pathText({path.begin(), path.end() - 1});
  const auto search = [&](std::u16string_view column, std::u16string_view table) {
    int found = 0;
    bool isOutside = false;
    const auto& sources = scope.select->sources;
    for (std::size_t place = 0; place < sources.size(); ++place) {
      const auto& source = sources[place];
      if (!table.empty() && !jet::sameName(source->name, table)) continue;
      for (std::size_t i = 0; i < source->columns.size(); ++i) {
        if (!jet::sameName(source->columns[i].name, column)) continue;
        if (scope.join != nullptr &&
            (place < scope.join->firstSource || place >= scope.join->sourcesEnd)) {
          isOutside = true;
          continue;
        }
        expression.source = source.get();
        expression.column = static_cast<int>(i);
        expression.type = source->columns[i].type;
        ++found;
      }
    }
    if (found > 1) throw error::ambiguousColumn(whole);
    if (found == 0 && isOutside) throw error::statement(u"JOIN expression not supported.");
    return found == 1;
  };
  if (search(path.back(), qualifier)) return true;
  if (path.size() > 1 && search(whole, {})) return true;
  return path.size() > 2 && search(pathText({path.begin() + 1, path.end()}), path.front());
}

bool Binder::findAlias(Expression& expression, const Scope& scope) const {
  if (expression.path.size() != 1) return false;
  for (std::size_t i = 0; i < scope.visibleItems; ++i) {
    const OutputColumn& column = scope.query->columns[i];
    if (!jet::sameName(column.name, expression.path[0])) continue;
    expression.aliased = column.expression;
    expression.type = column.type;
    return true;
  }
  return false;
}

void Binder::bindCall(Expression& expression, Scope& scope, Place place) {
  const Function* function = functionNamed(expression.text);
  if (function == nullptr) throw error::undefinedFunction(expression.text);
  const auto count = static_cast<int>(expression.arguments.size());
  if (count < function->fewest || count > function->most) {
    throw error::statement(u"Wrong number of arguments used with function in query expression '" +
                           expression.text + u"'.");
  }
  expression.function = function;
  Place inside = place;
  if (function->isAggregate()) {
    if (place == Place::Where) {
      throw error::statement(u"Cannot have aggregate function in WHERE clause (" + expression.text +
                             u").");
    }
    if (place == Place::InAggregate) {
      throw error::statement(u"Cannot have aggregate function in expression (" + expression.text +
                             u").");
    }
    scope.sawAggregate = true;
    inside = Place::InAggregate;
  }
  for (const auto& argument : expression.arguments) bindExpression(*argument, scope, inside);
  expression.type = callType(expression);
  if (function->writing == Function::Writing::Moment) becomeMoment(expression);
}

Type Binder::callType(const Expression& expression) {
  const Function& function = *expression.function;
  const std::size_t count = expression.arguments.size();
  Type type = Type::Null;
  switch (function.writing) {
    case Function::Writing::Choice:
      return commonType(typeOfArgument(expression, 1), typeOfArgument(expression, 2));
    case Function::Writing::Switch:
      for (std::size_t i = 1; i < count; i += 2) {
        type = commonType(type, typeOfArgument(expression, i));
      }
      return type;
    case Function::Writing::Choose:
      for (std::size_t i = 1; i < count; ++i) {
        type = commonType(type, typeOfArgument(expression, i));
      }
      return type;
    case Function::Writing::Fallback:
      if (count == 2)
        return commonType(typeOfArgument(expression, 0), typeOfArgument(expression, 1));
      // Alone, null becomes 0 where it stands for a number, else the empty text.
      type = typeOfArgument(expression, 0);
      return type == Type::Null ? Type::Text : type;
    case Function::Writing::Sum:
    case Function::Writing::Average:
      return typeOfArgument(expression, 0) == Type::Currency ? Type::Currency : Type::Double;
    default:
      break;
  }
  if (function.result == Function::Result::Fixed) return function.type;
  type = typeOfArgument(expression, 0);
  const bool keepsText = function.isAggregate();
  return keepsText || isNumeric(type) || type == Type::Null ? type : function.type;
}

void Binder::bindSubquery(Expression& expression, Scope& scope) {
  bindQuery(*expression.query, &scope);
  if (expression.kind == Expression::Kind::Exists) return;
  if (expression.query->columns.size() != 1) {
    throw error::statement(
        u"You have written a subquery that can return more than one field without using the "
        u"EXISTS reserved word in the main query's FROM clause. Revise the SELECT statement of "
        u"the subquery to request only one field.");
  }
}

}  // namespace jetsql
