#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/jetsql/Type.h"

namespace jetsql {

struct Query;
struct Source;
struct Expression;
struct Function;
using ExpressionPtr = std::unique_ptr<Expression>;

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

/// One node of an expression.
struct Expression {
  enum class Kind : std::uint8_t {
    Null,
    Boolean,     ///< `number`, -1 or 0
    Number,      ///< `number`
    Date,        ///< `number`, days
    Text,        ///< `text`
    Column,      ///< `path`, the last part being the column
    Unary,       ///< `op`, one argument
    Binary,      ///< `op`, two arguments
    IsNull,      ///< one argument
    Like,        ///< text and pattern; `text` is the operator's name
    Between,     ///< value and two bounds
    InList,      ///< value and the list's items
    InQuery,     ///< value; `query`
    Exists,      ///< `query`
    Scalar,      ///< `query`, of one column and at most one row
    Quantified,  ///< `op`, value; `query`; `every` for All
    Call,        ///< function `text`; turns out an aggregate where `function` says so
    CountRows,   ///< Count(*)
  };

  Kind kind = Kind::Null;
  Operator op = Operator::None;
  bool negated = false;  ///< Is Not Null, Not Like, Not Between, Not In
  bool every = false;
  double number = 0;
  std::u16string text;
  std::vector<std::u16string> path;
  std::vector<ExpressionPtr> arguments;
  std::unique_ptr<Query> query;
  int height = 1;  ///< levels of nodes below and with this one

  // What names mean, once they are bound.
  Type type = Type::Null;
  Source* source = nullptr;  ///< of a column
  int column = 0;            ///< place among the source's columns
  /// What the name stands for where it is the alias of an entry of the SELECT list.
  const Expression* aliased = nullptr;
  const Function* function = nullptr;

  Expression();
  explicit Expression(Kind k);
  ~Expression();
  Expression(const Expression&) = delete;
  Expression& operator=(const Expression&) = delete;
};

/// The expression itself, or the one that its name is an alias of.
const Expression& meant(const Expression& expression);
/// True when two bound expressions are the same.
bool sameExpression(const Expression& a, const Expression& b);

/// The parts of a column's path with dots between.
std::u16string pathText(const std::vector<std::u16string>& path);

}  // namespace jetsql
