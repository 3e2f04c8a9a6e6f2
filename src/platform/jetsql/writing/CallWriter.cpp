#include "platform/jetsql/writing/CallWriter.h"

#include <algorithm>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

std::string writeSwitch(ExpressionWriter& writer, const BoundExpression& call) {
  const auto& arguments = call.arguments;
  if (arguments.size() % 2 != 0) throw error::invalidCall();
  std::string text = "(CASE";
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    text += " WHEN " + writer.condition(*arguments[i]);
    text += " THEN " + writer.valueAs(*arguments[i + 1], call.type);
  }
  return text + " END)";
}

std::string writeChoose(ExpressionWriter& writer, const BoundExpression& call) {
  const auto& arguments = call.arguments;
  std::string text = "(CASE ";
  text += writer.statement().call("jet_fix", {writer.asNumber(*arguments[0])});
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    text += " WHEN " + std::to_string(i) + " THEN " + writer.valueAs(*arguments[i], call.type);
  }
  return text + " END)";
}

/// Nz: without a second argument, null becomes 0 where a number is expected, else the empty text.
std::string writeFallback(ExpressionWriter& writer, const BoundExpression& call) {
  const auto& arguments = call.arguments;
  std::string nothing = "0";
  if (arguments.size() == 2) {
    nothing = writer.valueAs(*arguments[1], call.type);
  } else if (!isNumeric(arguments[0]->type)) {
    nothing = writer.statement().parameter({});
  }
  return writer.statement().call("ifnull", {writer.valueAs(*arguments[0], call.type), nothing});
}

/// InStr, whose start may come first.
std::string writeInText(ExpressionWriter& writer, const std::vector<BoundPtr>& arguments) {
  const bool hasStart = arguments.size() > 2;
  const std::size_t first = hasStart ? 1 : 0;
  return writer.statement().call(
      "jet_instr", {hasStart ? writer.asNumber(*arguments[0]) : "1",
                    writer.asText(*arguments[first]), writer.asText(*arguments[first + 1])});
}

/// Sum and Avg: amounts add up exactly, in their ten-thousandths.
std::string writeSum(ExpressionWriter& writer, const BoundExpression& call) {
  StatementWriter& statement = writer.statement();
  const std::string_view target = call.function->target;
  if (call.type != Type::Currency) {
    return statement.call(target, {writer.asNumber(*call.arguments[0])});
  }
  const std::string exact = statement.call(target, {writer.value(*call.arguments[0])});
  return target == "avg" ? converted(exact, Type::Currency, Type::Double) : exact;
}

std::string writeArgument(ExpressionWriter& writer, char kind, const BoundExpression& argument) {
  if (kind == 't') return writer.asText(argument);
  if (kind == 'n') return writer.asNumber(argument);
  if (kind == 'c') return writer.compared(argument);
  return kind == 'k' ? writer.value(argument) : writer.plain(argument);
}

}  // namespace

std::string writeCall(ExpressionWriter& writer, const BoundExpression& call) {
  const Function& function = *call.function;
  const auto& arguments = call.arguments;
  using W = Function::Writing;
  const W writing = function.writing;
  if (writing == W::Iif) {
    return writeIif(writer, call,
                    [&](const BoundExpression& side) { return writer.valueAs(side, call.type); });
  }
  if (writing == W::Switch) return writeSwitch(writer, call);
  if (writing == W::Choose) return writeChoose(writer, call);
  if (writing == W::Fallback) return writeFallback(writer, call);
  if (writing == W::InText) return writeInText(writer, arguments);
  if (writing == W::Sum) return writeSum(writer, call);
  // Without a pattern, a date has the text to which `&` converts it.
  const bool isText = function.target == "jet_format" && arguments.size() == 1;
  std::vector<std::string> written;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char kind = function.takes[std::min(i, function.takes.size() - 1)];
    written.push_back(writeArgument(writer, isText ? 't' : kind, *arguments[i]));
  }
  return writer.statement().call(function.target, written);
}

/// Only the chosen side is evaluated; null chooses the second. A choice that is the second side of
/// another becomes further cases of that one: SQLite's parser accepts few levels of nesting.
std::string writeIif(ExpressionWriter& writer, const BoundExpression& call,
                     const std::function<std::string(const BoundExpression&)>& side) {
  std::string text = "(CASE";
  for (const BoundExpression* now = &call;;) {
    text += " WHEN " + writer.condition(*now->arguments[0]);
    text += " THEN " + side(*now->arguments[1]);
    now = now->arguments[2].get();
    const bool goesOn =
        now->kind == ExpressionKind::Call && now->function->writing == Function::Writing::Iif;
    if (!goesOn) return text + " ELSE " + side(*now) + " END)";
  }
}

}  // namespace jetsql
