#include "platform/jetsql/syntax/StatementError.h"

#include <initializer_list>
#include <string>

namespace jetsql::error {
namespace {

runtime::RunTimeError made(std::int32_t number, std::initializer_list<std::u16string_view> pieces) {
  std::u16string words;
  for (const std::u16string_view piece : pieces) words += piece;
  return {number, std::move(words)};
}

}  // namespace

runtime::RunTimeError expressionSyntax(std::u16string_view what, std::u16string_view expression) {
  return made(kStatementError,
              {u"Syntax error", what, u" in query expression '", expression, u"'."});
}

runtime::RunTimeError clauseSyntax(std::u16string_view clause) {
  return made(kStatementError, {u"Syntax error in ", clause, u"."});
}

runtime::RunTimeError statement(std::u16string_view words) {
  return made(kStatementError, {words});
}

runtime::RunTimeError missingParameter() {
  return made(kParameterError, {u"No value given for one or more required parameters."});
}

runtime::RunTimeError missingObject(std::u16string_view name) {
  return made(kObjectError, {u"The database engine cannot find the input table or query '", name,
                             u"'.  Make sure it exists and that its name is spelled correctly."});
}

runtime::RunTimeError undefinedFunction(std::u16string_view name) {
  return made(kStatementError, {u"Undefined function '", name, u"' in expression."});
}

runtime::RunTimeError ambiguousColumn(std::u16string_view name) {
  return made(kStatementError,
              {u"The specified field '", name,
               u"' could refer to more than one table listed in the FROM clause of your SQL "
               u"statement."});
}

runtime::RunTimeError notGrouped(std::u16string_view expression) {
  return made(kStatementError,
              {u"You tried to execute a query that does not include the specified expression '",
               expression, u"' as part of an aggregate function."});
}

runtime::RunTimeError typeMismatch() {
  return made(kConversionError, {u"Data type mismatch in criteria expression."});
}

runtime::RunTimeError overflow() {
  return made(kOverflowError, {u"Overflow"});
}

runtime::RunTimeError invalidCall() {
  return made(kStatementError, {u"Invalid procedure call."});
}

runtime::RunTimeError invalidNull() {
  return made(kConversionError, {u"Invalid use of Null."});
}

runtime::RunTimeError tooComplex() {
  return made(kEngineError, {u"Query is too complex."});
}

runtime::RunTimeError engine(std::u16string_view words) {
  return made(kEngineError, {words});
}

runtime::RunTimeError notCapable() {
  return made(kNotCapableError,
              {u"Object or provider is not capable of performing requested operation."});
}

}  // namespace jetsql::error
