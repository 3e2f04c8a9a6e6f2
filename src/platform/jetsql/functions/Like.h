#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace jetsql {

/// A pattern of `Like`: `*` any run, `?` one character, `#` one digit, `[…]` one of these, `[!…]`
/// none of these; of `ALike`: `%` any run, `_` one character, and the same brackets. Letter case
/// doesn't count.
class LikePattern {
 public:
  enum class Dialect : std::uint8_t { Like, Alike };

  /// Raises the engine's error for a bracket that is never closed or a range that runs backwards.
  LikePattern(std::u16string_view pattern, Dialect dialect);

  bool matches(std::u16string_view text) const;
  /// Number of elements: an upper bound of the comparisons for one character.
  std::size_t size() const { return elements_.size(); }

 private:
  /// A run of any characters, or one character within or outside of ranges.
  struct Element {
    bool isRun = false;
    bool negated = false;
    std::vector<std::pair<char16_t, char16_t>> ranges = {};

    bool accepts(char16_t folded) const;
  };

  bool isRunAt(std::size_t element) const {
    return element < elements_.size() && elements_[element].isRun;
  }
  std::size_t readSet(std::u16string_view pattern, std::size_t position);

  std::vector<Element> elements_;
};

/// A character folded for comparisons in which letter case doesn't count.
char16_t foldedCase(char16_t character);

}  // namespace jetsql
