#include "platform/jetsql/writing/CallWriter.h"

#include <algorithm>

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

std::string writeSwitch(ExpressionWriter& writer, const std::vector<BoundPtr>& arguments) {
  if (arguments.size() % 2 != 0) throw error::invalidCall();
  std::string text = "(CASE";
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    text += " WHEN " + writer.condition(*arguments[i]);
    text += " THEN " + writer.value(*arguments[i + 1]);
  }
  return text + " END)";
}

std::string writeChoose(ExpressionWriter& writer, const std::vector<BoundPtr>& arguments) {
  std::string text = "(CASE ";
  text += writer.statement().call("jet_fix", {writer.asNumber(*arguments[0])});
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    text += " WHEN " + std::to_string(i) + " THEN " + writer.value(*arguments[i]);
  }
  return text + " END)";
}

/// Nz: without a second argument, null becomes 0 where it stands for a number, else the empty text.
std::string writeFallback(ExpressionWriter& writer, const std::vector<BoundPtr>& arguments) {
  std::string nothing = "0";
  if (arguments.size() == 2) {
    nothing = writer.value(*arguments[1]);
  } else if (!isNumeric(arguments[0]->type)) {
    nothing = writer.statement().parameter({});
  }
  return writer.statement().call("ifnull", {writer.value(*arguments[0]), nothing});
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
  const std::string number = writer.asNumber(*call.arguments[0]);
  const std::string_view target = call.function->target;
  if (call.type != Type::Currency) return statement.call(target, {number});
  const std::string exact = statement.call("jet_ten_thousandths", {number});
  return "(" + statement.call(target, {exact}) + " / 10000.0)";
}

std::string writeArgument(ExpressionWriter& writer, char kind, const BoundExpression& argument) {
  switch (kind) {
    case 't':
      return writer.asText(argument);
    case 'n':
      return writer.asNumber(argument);
    case 'c':
      return writer.compared(argument);
    default:
      return writer.value(argument);
  }
}

}  // namespace

std::string writeCall(ExpressionWriter& writer, const BoundExpression& call) {
  const Function& function = *call.function;
  const auto& arguments = call.arguments;
  switch (function.writing) {
    case Function::Writing::Choice:
      return writeChoice(writer, call, &ExpressionWriter::value);
    case Function::Writing::Switch:
      return writeSwitch(writer, arguments);
    case Function::Writing::Choose:
      return writeChoose(writer, arguments);
    case Function::Writing::Fallback:
      return writeFallback(writer, arguments);
    case Function::Writing::InText:
      return writeInText(writer, arguments);
    case Function::Writing::Sum:
      return writeSum(writer, call);
    case Function::Writing::Plain:
    case Function::Writing::NullTest:
    case Function::Writing::Moment:
    case Function::Writing::Aggregate:
      break;
  }
  // A date alone is formatted as what `&` makes of it.
  const bool isText = function.target == "jet_format" && arguments.size() == 1;
  std::vector<std::string> written;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const char kind = function.takes[std::min(i, function.takes.size() - 1)];
    written.push_back(writeArgument(writer, isText ? 't' : kind, *arguments[i]));
  }
  return writer.statement().call(function.target, written);
}

/// Only the chosen side is evaluated; null chooses the second. A choice that is the second side of
/// another goes on with that one's cases: SQLite's parser takes few levels of nesting.
std::string writeChoice(ExpressionWriter& writer, const BoundExpression& call, Form form) {
  std::string text = "(CASE";
  for (const BoundExpression* now = &call;;) {
    text += " WHEN " + writer.condition(*now->arguments[0]);
    text += " THEN " + (writer.*form)(*now->arguments[1]);
    now = now->arguments[2].get();
    const bool goesOn =
        now->kind == ExpressionKind::Call && now->function->writing == Function::Writing::Choice;
    if (!goesOn) return text + " ELSE " + (writer.*form)(*now) + " END)";
  }
}

}  // namespace jetsql
