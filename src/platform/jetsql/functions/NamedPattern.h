#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "platform/jetsql/syntax/Token.h"

namespace jetsql {

/// A pattern that `Format` accepts by its name.
struct NamedPattern {
  std::u16string_view name;
  std::u16string_view pattern;
};

/// The pattern of that name; `name` itself where none has it.
inline std::u16string_view patternNamed(std::u16string_view name,
                                        std::span<const NamedPattern> all) {
  const auto found =
      std::ranges::find_if(all, [&](const auto& each) { return sameWord(name, each.name); });
  return found == all.end() ? name : found->pattern;
}

}  // namespace jetsql
