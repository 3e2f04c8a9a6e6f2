#pragma once

#include <string>

#include "platform/jetsql/writing/ExpressionWriter.h"

namespace jetsql {

/// SQLite's text of a call of one of the dialect's functions.
std::string writeCall(ExpressionWriter& writer, const BoundExpression& call);

/// A form in which an expression is written.
using Form = std::string (ExpressionWriter::*)(const BoundExpression&);

/// IIf, with its sides in a form.
std::string writeChoice(ExpressionWriter& writer, const BoundExpression& call, Form form);

}  // namespace jetsql
