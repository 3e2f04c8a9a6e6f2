#pragma once

#include <string_view>

#include "platform/runtime/ProviderError.h"

/// The words for what keeps a statement from running, each as an error to be thrown;
/// `runtime/ProviderError.h` has what they have in common with the engine's.
namespace jetsql::error {

/// "Syntax error<what> in query expression '<expression>'."; `what` is empty or begins with a
/// blank.
runtime::RunTimeError expressionSyntax(std::u16string_view what, std::u16string_view expression);
/// "Syntax error in <clause>."
runtime::RunTimeError clauseSyntax(std::u16string_view clause);
/// Any other fault of a statement, with that text.
runtime::RunTimeError statement(std::u16string_view words);

runtime::RunTimeError missingParameter();
runtime::RunTimeError missingObject(std::u16string_view name);
runtime::RunTimeError undefinedFunction(std::u16string_view name);
runtime::RunTimeError ambiguousColumn(std::u16string_view name);
runtime::RunTimeError notGrouped(std::u16string_view expression);
using runtime::typeMismatch;
runtime::RunTimeError overflow();
runtime::RunTimeError invalidCall();
runtime::RunTimeError invalidNull();
runtime::RunTimeError tooComplex();
runtime::RunTimeError notCapable();

}  // namespace jetsql::error
