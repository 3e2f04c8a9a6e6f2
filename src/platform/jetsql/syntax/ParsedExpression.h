#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/jetsql/syntax/Operator.h"

namespace jetsql {

struct ParsedQuery;

/// What the parsed and the bound form of an expression's node have in common.
struct ExpressionNode {
  ExpressionKind kind = ExpressionKind::Null;
  Operator op = Operator::None;
  bool negated = false;  ///< Is Not Null, Not Like, Not Between, Not In
  bool every = false;    ///< Quantified: All, not Any or Some
  double number = 0;
  std::u16string text = {};  ///< a text, a function's name as written or, once bound, a column's
};

/// One node of an expression as it was written.
struct ParsedExpression : ExpressionNode {
  std::vector<std::u16string> path = {};  ///< of a column
  std::vector<ParsedExpression> arguments = {};
  std::shared_ptr<const ParsedQuery> query = {};
  int height = 1;  ///< levels of nodes from this one down, those of its query included

  const ExpressionNode& node() const { return *this; }
};

/// The parts of a column's path with dots between.
inline std::u16string pathText(const std::vector<std::u16string>& path) {
  std::u16string text;
  for (const std::u16string& part : path) text += (text.empty() ? u"" : u".") + part;
  return text;
}

}  // namespace jetsql
