#include <utility>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Function.h"
#include "platform/jetsql/SqlWriter.h"

namespace jetsql {

std::string SqlWriter::callValue(const Expression& expression) {
  const Function& function = *expression.function;
  const auto& arguments = expression.arguments;
  switch (function.writing) {
    case Function::Writing::Choice:
      return choice(expression, false);
    case Function::Writing::Switch: {
      if (arguments.size() % 2 != 0) throw error::invalidCall();
      std::string whole = "CASE";
      for (std::size_t i = 0; i < arguments.size(); i += 2) {
        whole += " WHEN " + condition(*arguments[i]) + " THEN " + value(*arguments[i + 1]);
      }
      return "(" + whole + " END)";
    }
    case Function::Writing::Choose: {
      std::string whole = "CASE " + call("jet_fix", {asNumber(*arguments[0])});
      for (std::size_t i = 1; i < arguments.size(); ++i) {
        whole += " WHEN " + std::to_string(i) + " THEN " + value(*arguments[i]);
      }
      return "(" + whole + " END)";
    }
    case Function::Writing::Fallback: {
      if (arguments.size() == 2) {
        return "ifnull(" + value(*arguments[0]) + ", " + value(*arguments[1]) + ")";
      }
      const std::string nothing = isNumeric(arguments[0]->type) ? "0" : text({});
      return "ifnull(" + value(*arguments[0]) + ", " + nothing + ")";
    }
    case Function::Writing::InText: {
      const bool hasStart = arguments.size() > 2;
      const std::size_t first = hasStart ? 1 : 0;
      return call("jet_instr", {hasStart ? asNumber(*arguments[0]) : "1", asText(*arguments[first]),
                                asText(*arguments[first + 1])});
    }
    case Function::Writing::Plain:
      break;
    default:
      return aggregate(expression);
  }
  // A date alone is formatted as what `&` makes of it.
  if (function.target == "jet_format" && arguments.size() == 1) {
    return call(function.target, {asText(*arguments[0])});
  }
  std::vector<std::string> written;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char kind = function.takes[std::min(i, function.takes.size() - 1)];
    if (kind == 't') written.push_back(asText(*arguments[i]));
    if (kind == 'n') written.push_back(asNumber(*arguments[i]));
    if (kind == 'v') written.push_back(value(*arguments[i]));
  }
  return call(function.target, written);
}

/// IIf: only the chosen side is evaluated; null chooses the second. A choice that is the second
/// side of another goes on with that one's cases: SQLite's parser takes few levels of nesting.
std::string SqlWriter::choice(const Expression& expression, bool asCondition) {
  const auto side = [&](const Expression& chosen) {
    return asCondition ? condition(chosen) : value(chosen);
  };
  const auto goesOn = [&](const Expression& second) {
    return second.kind == Expression::Kind::Call &&
           second.function->writing == Function::Writing::Choice && !isGroupTerm(second);
  };
  std::string whole = "(CASE";
  for (const Expression* now = &expression;;) {
    whole += " WHEN " + condition(*now->arguments[0]) + " THEN " + side(*now->arguments[1]);
    now = &meant(*now->arguments[2]);
    if (!goesOn(*now)) return whole + " ELSE " + side(*now) + " END)";
  }
}

std::string SqlWriter::aggregate(const Expression& expression) {
  const Select* grouping = std::exchange(grouping_, nullptr);
  const Function& function = *expression.function;
  const Expression& argument = *expression.arguments[0];
  std::string whole;
  switch (function.writing) {
    case Function::Writing::Sum:
    case Function::Writing::Average:
      // Currency adds up exactly, in its ten-thousandths.
      whole = argument.type == Type::Currency
                  ? "(" + call(function.target, {exact(argument)}) + " / 10000.0)"
                  : call(function.target, {asNumber(argument)});
      break;
    case Function::Writing::Extreme:
      whole = isTextual(argument.type) || argument.type == Type::Any
                  ? call("jet_" + std::string(function.target), {value(argument), key(argument)})
                  : call(function.target, {value(argument)});
      break;
    case Function::Writing::Count:
      whole = call(function.target, {value(argument)});
      break;
    default:
      whole = call(function.target, {function.takes == "n" ? asNumber(argument) : value(argument)});
      break;
  }
  grouping_ = grouping;
  return whole;
}

}  // namespace jetsql
