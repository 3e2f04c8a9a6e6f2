#pragma once

#include <functional>
#include <string>

#include "platform/jetsql/writing/ExpressionWriter.h"

namespace jetsql {

/// The SQL text of a call of one of the dialect's functions.
std::string writeCall(ExpressionWriter& writer, const BoundExpression& call);

/// IIf, whose sides are written by a function.
std::string writeChoice(ExpressionWriter& writer, const BoundExpression& call,
                        const std::function<std::string(const BoundExpression&)>& side);

}  // namespace jetsql
