#include "platform/jetsql/syntax/ParsedExpression.h"

namespace jetsql {

std::u16string pathText(const std::vector<std::u16string>& path) {
  std::u16string text;
  for (const std::u16string& part : path) {
    if (!text.empty()) text += u'.';
    text += part;
  }
  return text;
}

}  // namespace jetsql
