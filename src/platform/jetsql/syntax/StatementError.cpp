#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql::error {
namespace {

using runtime::providerError;
using runtime::ProviderNumber;

runtime::RunTimeError statement(std::initializer_list<std::u16string_view> words) {
  return providerError(ProviderNumber::Statement, words);
}

runtime::RunTimeError general(std::initializer_list<std::u16string_view> words) {
  return providerError(ProviderNumber::General, words);
}

}  // namespace

runtime::RunTimeError missingOperator(std::u16string_view expression) {
  return statement({u"Syntax error (missing operator) in query expression '", expression, u"'."});
}

runtime::RunTimeError missingClosing(std::u16string_view expression) {
  return statement({u"Missing ), ], or Item in query expression '", expression, u"'."});
}

runtime::RunTimeError unclosedText(std::u16string_view expression) {
  return statement({u"Syntax error in string in query expression '", expression, u"'."});
}

runtime::RunTimeError unclosedDate(std::u16string_view expression) {
  return statement({u"Syntax error in date in query expression '", expression, u"'."});
}

runtime::RunTimeError unclosedName(std::u16string_view name) {
  return statement({u"Invalid bracketing of name '", name, u"'."});
}

runtime::RunTimeError clauseSyntax(std::u16string_view clause) {
  return statement({u"Syntax error in ", clause, u"."});
}

runtime::RunTimeError reservedWord() {
  return statement(
      {u"The SELECT statement includes a reserved word or an argument name that is misspelled or "
       u"missing, or the punctuation is incorrect."});
}

runtime::RunTimeError unknownStatement() {
  return statement(
      {u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
       u"'UPDATE'."});
}

runtime::RunTimeError textAfterEnd() {
  return statement({u"Characters found after end of SQL statement."});
}

runtime::RunTimeError missingInput() {
  return statement({u"Query input must contain at least one table or query."});
}

runtime::RunTimeError notCapable() {
  return providerError(ProviderNumber::NotCapable,
                       {u"Object or provider is not capable of performing requested operation."});
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

runtime::RunTimeError linkedTable(std::u16string_view name) {
  return general(
      {u"The table '", name, u"' is linked from another database, which can't be opened here."});
}

runtime::RunTimeError circularReference(std::u16string_view query) {
  return general({u"Circular reference caused by '", query, u"'."});
}

runtime::RunTimeError undefinedFunction(std::u16string_view name) {
  return statement({u"Undefined function '", name, u"' in expression."});
}

runtime::RunTimeError argumentCount(std::u16string_view function) {
  return statement(
      {u"Wrong number of arguments used with function in query expression '", function, u"'."});
}

runtime::RunTimeError ambiguousColumn(std::u16string_view name) {
  return statement(
      {u"The specified field '", name,
       u"' could refer to more than one table listed in the FROM clause of your SQL statement."});
}

runtime::RunTimeError duplicateAlias(std::u16string_view alias) {
  return statement({u"Duplicate output alias '", alias, u"'."});
}

runtime::RunTimeError unsupportedJoin() {
  return statement({u"JOIN expression not supported."});
}

runtime::RunTimeError notGrouped(std::u16string_view expression) {
  return statement(
      {u"You tried to execute a query that does not include the specified expression '", expression,
       u"' as part of an aggregate function."});
}

runtime::RunTimeError aggregateForbidden(std::u16string_view where, std::u16string_view function) {
  return statement({u"Cannot have aggregate function in ", where, u" (", function, u")."});
}

runtime::RunTimeError orderNotDistinct(std::u16string_view path) {
  return statement({u"ORDER BY clause (", path, u") conflicts with DISTINCT."});
}

runtime::RunTimeError orderNotInUnion(std::u16string_view path) {
  return statement(
      {u"The ORDER BY expression (", path,
       u") includes fields that are not selected by the query.  Only those fields requested in the "
       u"first query can be included in an ORDER BY expression."});
}

runtime::RunTimeError unequalUnion() {
  return statement(
      {u"The number of columns in the two selected tables or queries of a union query do not "
       u"match."});
}

runtime::RunTimeError subqueryColumns() {
  return statement(
      {u"You have written a subquery that can return more than one field without using the EXISTS "
       u"reserved word in the main query's FROM clause. Revise the SELECT statement of the "
       u"subquery "
       u"to request only one field."});
}

runtime::RunTimeError foreignQuery(std::u16string_view name) {
  return general({u"The query '", name, u"' reads another database, which can't be opened here."});
}

runtime::RunTimeError notSelectQuery(std::u16string_view name) {
  return general({u"The query '", name, u"' is no select query and can't be opened as a table."});
}

runtime::RunTimeError damagedQuery(std::u16string_view name) {
  return general({u"The query '", name, u"' is damaged."});
}

runtime::RunTimeError ruleTooLong() {
  return general({u"It is too long."});
}

runtime::RunTimeError queryInRule() {
  return general({u"A rule can't contain a query."});
}

runtime::RunTimeError unknownRuleColumn(std::u16string_view path) {
  return general({u"The table has no column '", path, u"'."});
}

runtime::RunTimeError overflow() {
  return providerError(ProviderNumber::TooLarge, {u"Overflow"});
}

runtime::RunTimeError divisionByZero() {
  return statement({u"Division by zero"});
}

runtime::RunTimeError invalidCall() {
  return statement({u"Invalid procedure call."});
}

runtime::RunTimeError invalidNull() {
  return providerError(ProviderNumber::Mismatch, {u"Invalid use of Null."});
}

runtime::RunTimeError invalidPattern() {
  return statement({u"Invalid pattern string."});
}

runtime::RunTimeError textTooLong() {
  return general({u"Out of string space."});
}

runtime::RunTimeError subqueryRows() {
  return general({u"At most one record can be returned by this subquery."});
}

runtime::RunTimeError tooManyColumns() {
  return statement({u"Too many fields defined."});
}

runtime::RunTimeError tooComplex() {
  return general({u"Query is too complex."});
}

runtime::RunTimeError tooComplex(std::u16string_view reason) {
  return general({u"Query is too complex (", reason, u")."});
}

runtime::RunTimeError unregisteredFunction() {
  return general({u"A function of the dialect is missing."});
}

}  // namespace jetsql::error
