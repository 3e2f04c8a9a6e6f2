#include "platform/jetsql/syntax/StatementError.h"

#include <string>
#include <utility>

namespace jetsql {

runtime::RunTimeError StatementError::operator()(std::u16string_view first,
                                                 std::u16string_view second) const {
  std::u16string words;
  for (const char16_t c : text) {
    if (c == u'|') {
      words += std::exchange(first, second);
    } else {
      words += c;
    }
  }
  return runtime::providerError(number, {words});
}

}  // namespace jetsql
