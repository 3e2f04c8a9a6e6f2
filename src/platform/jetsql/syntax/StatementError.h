#pragma once

#include <string_view>

#include "platform/runtime/ProviderError.h"

/// The errors of statements, saved queries and rules, each with its number and text, to be thrown;
/// `runtime/ProviderError.h` has what they have in common with the engine's.
namespace jetsql::error {

// The grammar. `expression` is the text of the query expression that contains the fault.
runtime::RunTimeError missingOperator(std::u16string_view expression);
runtime::RunTimeError missingClosing(std::u16string_view expression);
runtime::RunTimeError unclosedText(std::u16string_view expression);
runtime::RunTimeError unclosedDate(std::u16string_view expression);
runtime::RunTimeError unclosedName(std::u16string_view name);
/// "Syntax error in <clause>."
runtime::RunTimeError clauseSyntax(std::u16string_view clause);
runtime::RunTimeError reservedWord();
runtime::RunTimeError unknownStatement();
runtime::RunTimeError textAfterEnd();
runtime::RunTimeError missingInput();
runtime::RunTimeError notCapable();

// Names, and what they may be used for. `path` is a column's name as the statement has it.
runtime::RunTimeError missingParameter();
runtime::RunTimeError missingObject(std::u16string_view name);
runtime::RunTimeError linkedTable(std::u16string_view name);
runtime::RunTimeError circularReference(std::u16string_view query);
runtime::RunTimeError undefinedFunction(std::u16string_view name);
runtime::RunTimeError argumentCount(std::u16string_view function);
runtime::RunTimeError ambiguousColumn(std::u16string_view name);
runtime::RunTimeError duplicateAlias(std::u16string_view alias);
runtime::RunTimeError unsupportedJoin();
runtime::RunTimeError notGrouped(std::u16string_view expression);
/// `where` is "WHERE clause" or "expression".
runtime::RunTimeError aggregateForbidden(std::u16string_view where, std::u16string_view function);
runtime::RunTimeError orderNotDistinct(std::u16string_view path);
runtime::RunTimeError orderNotInUnion(std::u16string_view path);
runtime::RunTimeError unequalUnion();
runtime::RunTimeError subqueryColumns();

// Saved queries.
runtime::RunTimeError foreignQuery(std::u16string_view name);
runtime::RunTimeError notSelectQuery(std::u16string_view name);
runtime::RunTimeError damagedQuery(std::u16string_view name);

// Validation rules: reasons why one can't be evaluated.
runtime::RunTimeError ruleTooLong();
runtime::RunTimeError queryInRule();
runtime::RunTimeError unknownRuleColumn(std::u16string_view path);

// Values, while the statement runs.
using runtime::typeMismatch;
runtime::RunTimeError overflow();
runtime::RunTimeError divisionByZero();
runtime::RunTimeError invalidCall();
runtime::RunTimeError invalidNull();
runtime::RunTimeError invalidPattern();
runtime::RunTimeError textTooLong();
runtime::RunTimeError subqueryRows();

// Limits.
runtime::RunTimeError tooManyColumns();
runtime::RunTimeError tooComplex();
/// The same for a refusal of SQLite, with its reason.
runtime::RunTimeError tooComplex(std::u16string_view reason);
/// The SQL written for SQLite calls a function that `functions` doesn't list.
runtime::RunTimeError unregisteredFunction();

}  // namespace jetsql::error
