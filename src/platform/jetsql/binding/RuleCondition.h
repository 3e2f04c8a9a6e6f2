#pragma once

#include "platform/jet/engine/ValidationRule.h"
#include "platform/jetsql/syntax/ParsedQuery.h"

namespace jetsql {

/// The rules of a store's owner, in the dialect. A table's rule is a full expression. A column's is
/// a criterion: terms joined by And, Or, Not and the other logical operators, perhaps in
/// parentheses. A term is one of three: a comparison, In, Like, Between or Is without its left
/// operand, which is the column; a value, which the column has to equal; a complete condition.

/// A query that has one row where the rule is False for the row, and none where it is true or null.
/// Raises the engine's error for a rule that can't be parsed.
ParsedQuery violationQuery(const jet::ValidationRule& rule, const jet::NewRow& row);

}  // namespace jetsql
