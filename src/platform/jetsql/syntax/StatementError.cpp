#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql::error {

using runtime::providerError;
using runtime::ProviderNumber;

runtime::RunTimeError expressionSyntax(std::u16string_view what, std::u16string_view expression) {
  return providerError(ProviderNumber::Statement,
                       {u"Syntax error", what, u" in query expression '", expression, u"'."});
}

runtime::RunTimeError clauseSyntax(std::u16string_view clause) {
  return providerError(ProviderNumber::Statement, {u"Syntax error in ", clause, u"."});
}

runtime::RunTimeError statement(std::u16string_view words) {
  return providerError(ProviderNumber::Statement, {words});
}

runtime::RunTimeError missingParameter() {
  return providerError(ProviderNumber::Parameter,
                       {u"No value given for one or more required parameters."});
}

runtime::RunTimeError missingObject(std::u16string_view name) {
  return providerError(ProviderNumber::Object,
                       {u"The database engine cannot find the input table or query '", name,
                        u"'.  Make sure it exists and that its name is spelled correctly."});
}

runtime::RunTimeError undefinedFunction(std::u16string_view name) {
  return providerError(ProviderNumber::Statement,
                       {u"Undefined function '", name, u"' in expression."});
}

runtime::RunTimeError ambiguousColumn(std::u16string_view name) {
  return providerError(
      ProviderNumber::Statement,
      {u"The specified field '", name,
       u"' could refer to more than one table listed in the FROM clause of your SQL "
       u"statement."});
}

runtime::RunTimeError notGrouped(std::u16string_view expression) {
  return providerError(
      ProviderNumber::Statement,
      {u"You tried to execute a query that does not include the specified expression '", expression,
       u"' as part of an aggregate function."});
}

runtime::RunTimeError overflow() {
  return providerError(ProviderNumber::TooLarge, {u"Overflow"});
}

runtime::RunTimeError invalidCall() {
  return providerError(ProviderNumber::Statement, {u"Invalid procedure call."});
}

runtime::RunTimeError invalidNull() {
  return providerError(ProviderNumber::Mismatch, {u"Invalid use of Null."});
}

runtime::RunTimeError tooComplex() {
  return providerError(ProviderNumber::General, {u"Query is too complex."});
}

runtime::RunTimeError notCapable() {
  return providerError(ProviderNumber::NotCapable,
                       {u"Object or provider is not capable of performing requested operation."});
}

}  // namespace jetsql::error
