#pragma once

#include <cstdint>
#include <string_view>

#include "platform/runtime/RunTimeError.h"

namespace jetsql {

/// Numbers under which the provider reports what keeps a statement from running.
inline constexpr std::int32_t kStatementError = -2147217900;   ///< syntax, names, functions
inline constexpr std::int32_t kParameterError = -2147217904;   ///< a name that nothing explains
inline constexpr std::int32_t kObjectError = -2147217865;      ///< no such table or query
inline constexpr std::int32_t kConversionError = -2147217913;  ///< types that don't go together
inline constexpr std::int32_t kOverflowError = -2147217833;
inline constexpr std::int32_t kEngineError = -2147467259;  ///< anything else
inline constexpr std::int32_t kNotCapableError = 3251;

/// The engine's words, each as an error to be thrown.
namespace error {

/// "Syntax error<what> in query expression '<expression>'."; `what` is empty or begins with a
/// blank.
runtime::RunTimeError expressionSyntax(std::u16string_view what, std::u16string_view expression);
/// "Syntax error in <clause>."
runtime::RunTimeError clauseSyntax(std::u16string_view clause);
/// Any other fault of a statement, in full words.
runtime::RunTimeError statement(std::u16string_view words);

runtime::RunTimeError missingParameter();
runtime::RunTimeError missingObject(std::u16string_view name);
runtime::RunTimeError undefinedFunction(std::u16string_view name);
runtime::RunTimeError ambiguousColumn(std::u16string_view name);
runtime::RunTimeError notGrouped(std::u16string_view expression);
runtime::RunTimeError typeMismatch();
runtime::RunTimeError overflow();
runtime::RunTimeError invalidCall();
runtime::RunTimeError invalidNull();
runtime::RunTimeError tooComplex();
/// Any other fault while a statement runs, in full words.
runtime::RunTimeError engine(std::u16string_view words);
runtime::RunTimeError notCapable();

}  // namespace error
}  // namespace jetsql
