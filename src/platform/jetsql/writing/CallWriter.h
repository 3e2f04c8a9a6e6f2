#pragma once

#include <functional>
#include <string>

#include "platform/jetsql/writing/ExpressionWriter.h"

namespace jetsql {

/// The SQL text of a call of one of the dialect's functions.
std::string writeCall(ExpressionWriter& writer, const BoundExpression& call);

/// The SQL text of a call of IIf; `side` writes its second and third argument.
std::string writeIif(ExpressionWriter& writer, const BoundExpression& call,
                     const std::function<std::string(const BoundExpression&)>& side);

}  // namespace jetsql
