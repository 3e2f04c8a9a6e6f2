#pragma once

#include <string_view>

#include "platform/runtime/ProviderError.h"

namespace jetsql {

/// An error of the engine by its number and text, in which each `|` stands for an argument.
struct StatementError {
  runtime::ProviderNumber number;
  std::u16string_view text;

  /// The error, to be thrown, with its arguments.
  runtime::RunTimeError operator()(std::u16string_view first = {},
                                   std::u16string_view second = {}) const;
};

/// The errors of statements, saved queries and rules. `runtime/ProviderError.h` has the numbers,
/// and the errors that `jet` raises too.
namespace error {

using Error = StatementError;
using runtime::providerMismatch;
inline constexpr auto kStatement = runtime::ProviderNumber::Statement;
inline constexpr auto kGeneral = runtime::ProviderNumber::General;

// The grammar. "query expression '|'" quotes the clause's expression that contains the fault.
inline constexpr Error missingOperator{kStatement,
                                       u"Syntax error (missing operator) in query expression '|'."};
inline constexpr Error missingClosing{kStatement,
                                      u"Missing ), ], or Item in query expression '|'."};
inline constexpr Error unclosedText{kStatement, u"Syntax error in string in query expression '|'."};
inline constexpr Error unclosedDate{kStatement, u"Syntax error in date in query expression '|'."};
inline constexpr Error unclosedName{kStatement, u"Invalid bracketing of name '|'."};
inline constexpr Error clauseSyntax{kStatement, u"Syntax error in |."};
inline constexpr Error reservedWord{
    kStatement,
    u"The SELECT statement includes a reserved word or an argument name that is misspelled or "
    u"missing, or the punctuation is incorrect."};
inline constexpr Error unknownStatement{
    kStatement,
    u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."};
inline constexpr Error textAfterEnd{kStatement, u"Characters found after end of SQL statement."};
inline constexpr Error missingInput{kStatement,
                                    u"Query input must contain at least one table or query."};
inline constexpr Error notCapable{
    runtime::ProviderNumber::NotCapable,
    u"Object or provider is not capable of performing requested operation."};

// Names, and what they may be used for.
inline constexpr Error missingParameter{runtime::ProviderNumber::Parameter,
                                        u"No value given for one or more required parameters."};
inline constexpr Error missingObject{
    runtime::ProviderNumber::Object,
    u"The database engine cannot find the input table or query '|'.  Make sure it exists and that "
    u"its name is spelled correctly."};
inline constexpr Error linkedTable{
    kGeneral, u"The table '|' is linked from another database, which can't be opened here."};
inline constexpr Error circularReference{kGeneral, u"Circular reference caused by '|'."};
inline constexpr Error undefinedFunction{kStatement, u"Undefined function '|' in expression."};
inline constexpr Error argumentCount{
    kStatement, u"Wrong number of arguments used with function in query expression '|'."};
inline constexpr Error ambiguousColumn{
    kStatement,
    u"The specified field '|' could refer to more than one table listed in the FROM clause of your "
    u"SQL statement."};
inline constexpr Error duplicateAlias{kStatement, u"Duplicate output alias '|'."};
inline constexpr Error unsupportedJoin{kStatement, u"JOIN expression not supported."};
inline constexpr Error notGrouped{kStatement,
                                  u"You tried to execute a query that does not include the "
                                  u"specified expression '|' as part of an "
                                  u"aggregate function."};
/// The first argument is "WHERE clause" or "expression", the second the function.
inline constexpr Error aggregateForbidden{kStatement, u"Cannot have aggregate function in | (|)."};
inline constexpr Error orderNotDistinct{kStatement,
                                        u"ORDER BY clause (|) conflicts with DISTINCT."};
inline constexpr Error orderNotInUnion{
    kStatement,
    u"The ORDER BY expression (|) includes fields that are not selected by the query.  Only those "
    u"fields requested in the first query can be included in an ORDER BY expression."};
inline constexpr Error unequalUnion{
    kStatement,
    u"The number of columns in the two selected tables or queries of a union query do not match."};
inline constexpr Error subqueryColumns{
    kStatement,
    u"You have written a subquery that can return more than one field without using the EXISTS "
    u"reserved word in the main query's FROM clause. Revise the SELECT statement of the subquery "
    u"to request only one field."};

// Saved queries.
inline constexpr Error foreignQuery{
    kGeneral, u"The query '|' reads another database, which can't be opened here."};
inline constexpr Error notSelectQuery{
    kGeneral, u"The query '|' is no select query and can't be opened as a table."};
inline constexpr Error damagedQuery{kGeneral, u"The query '|' is damaged."};

// Validation rules: reasons why one can't be evaluated.
inline constexpr Error ruleTooLong{kGeneral, u"It is too long."};
inline constexpr Error queryInRule{kGeneral, u"A rule can't contain a query."};
inline constexpr Error unknownRuleColumn{kGeneral, u"The table has no column '|'."};

// Values, while the statement runs.
inline constexpr Error overflow{runtime::ProviderNumber::TooLarge, u"Overflow"};
inline constexpr Error divisionByZero{kStatement, u"Division by zero"};
inline constexpr Error invalidCall{kStatement, u"Invalid procedure call."};
inline constexpr Error invalidNull{runtime::ProviderNumber::Mismatch, u"Invalid use of Null."};
inline constexpr Error invalidPattern{kStatement, u"Invalid pattern string."};
inline constexpr Error textTooLong{kGeneral, u"Out of string space."};
inline constexpr Error subqueryRows{kGeneral,
                                    u"At most one record can be returned by this subquery."};

// Limits.
inline constexpr Error tooManyColumns{kStatement, u"Too many fields defined."};
inline constexpr Error tooComplex{kGeneral, u"Query is too complex."};
/// The same for a refusal of SQLite, with its reason.
inline constexpr Error refused{kGeneral, u"Query is too complex (|)."};
/// The SQL written for SQLite calls a function that `functions` doesn't list.
inline constexpr Error unregisteredFunction{kGeneral, u"A function of the dialect is missing."};

}  // namespace error
}  // namespace jetsql
