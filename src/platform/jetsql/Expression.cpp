#include "platform/jetsql/Expression.h"

#include "platform/jetsql/Query.h"

namespace jetsql {

Expression::Expression() = default;
Expression::Expression(Kind k) : kind(k) {}
Expression::~Expression() = default;

const Expression& meant(const Expression& expression) {
  const Expression* found = &expression;
  while (found->aliased != nullptr) found = found->aliased;
  return *found;
}

bool sameExpression(const Expression& left, const Expression& right) {
  const Expression& a = meant(left);
  const Expression& b = meant(right);
  if (a.kind != b.kind || a.op != b.op || a.negated != b.negated || a.query || b.query ||
      a.arguments.size() != b.arguments.size() || a.function != b.function) {
    return false;
  }
  if (a.kind == Expression::Kind::Column) return a.source == b.source && a.column == b.column;
  if (a.number != b.number || a.text != b.text) return false;
  for (std::size_t i = 0; i < a.arguments.size(); ++i) {
    if (!sameExpression(*a.arguments[i], *b.arguments[i])) return false;
  }
  return true;
}

std::u16string pathText(const std::vector<std::u16string>& path) {
  std::u16string text;
  for (const std::u16string& part : path) {
    if (!text.empty()) text += u'.';
    text += part;
  }
  return text;
}

}  // namespace jetsql
