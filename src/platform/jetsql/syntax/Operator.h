#pragma once

#include <cstdint>

namespace jetsql {

enum class Operator : std::uint8_t {
  None,
  Or,
  And,
  Xor,
  Eqv,
  Imp,
  Not,
  Equal,
  NotEqual,
  Less,
  LessOrEqual,
  Greater,
  GreaterOrEqual,
  Concatenate,
  Add,
  Subtract,
  Modulo,
  IntegerDivide,
  Multiply,
  Divide,
  Negate,
  Power,
};

inline constexpr bool isComparison(Operator op) {
  return op >= Operator::Equal && op <= Operator::GreaterOrEqual;
}
inline constexpr bool isLogical(Operator op) {
  return op >= Operator::Or && op <= Operator::Not;
}

/// The kinds of nodes that an expression consists of.
enum class ExpressionKind : std::uint8_t {
  Null,
  Boolean,     ///< a number, -1 or 0
  Integer,     ///< a number of 32 bits
  Number,      ///< any other number
  Date,        ///< a number of days
  Text,        ///< a text
  Column,      ///< a path of names, the last one being the column's
  Unary,       ///< an operator with one argument
  Binary,      ///< an operator with two arguments
  IsNull,      ///< one argument
  Like,        ///< text and pattern, by the wildcards `*` and `?`
  Alike,       ///< the same by the wildcards `%` and `_`
  Between,     ///< value and two bounds
  InList,      ///< value and the list's items
  InQuery,     ///< value and query
  Exists,      ///< query
  Quantified,  ///< an operator, value and query; `every` for All
  Scalar,      ///< query, of one column and at most one row
  Call,        ///< a function with arguments
};

/// True for nodes that are true, false or null, whatever their arguments.
inline constexpr bool isTest(ExpressionKind kind, Operator op) {
  if (kind == ExpressionKind::Unary || kind == ExpressionKind::Binary) {
    return isLogical(op) || isComparison(op);
  }
  return kind >= ExpressionKind::IsNull && kind <= ExpressionKind::Quantified;
}

}  // namespace jetsql
