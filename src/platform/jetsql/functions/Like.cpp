#include "platform/jetsql/functions/Like.h"

#include <algorithm>
#include <optional>

#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/Text.h"

namespace jetsql {

char16_t foldedCase(char16_t character) {
  return runtime::lowerCase(runtime::upperCase(character));
}

LikePattern::LikePattern(std::u16string_view pattern, Dialect dialect) {
  const bool isLike = dialect == Dialect::Like;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char16_t c = pattern[i];
    if (c == (isLike ? u'*' : u'%')) {
      // Adjacent runs are one.
      if (elements_.empty() || !elements_.back().isRun) elements_.push_back({.isRun = true});
    } else if (c == (isLike ? u'?' : u'_')) {
      elements_.push_back({.negated = true});
    } else if (isLike && c == u'#') {
      elements_.push_back({.ranges = {{u'0', u'9'}}});
    } else if (c == u'[') {
      i = readSet(pattern, i);
    } else {
      elements_.push_back({.ranges = {{foldedCase(c), foldedCase(c)}}});
    }
  }
}

/// Reads the brackets that open at this index; returns the index at which they close.
std::size_t LikePattern::readSet(std::u16string_view pattern, std::size_t position) {
  const std::size_t close = pattern.find(u']', position + 1);
  if (close == std::u16string_view::npos) throw error::invalidPattern();
  std::u16string_view inside = pattern.substr(position + 1, close - position - 1);
  if (inside.empty()) return close;
  Element element{.negated = inside.size() > 1 && inside.front() == u'!'};
  if (element.negated) inside.remove_prefix(1);
  for (std::size_t i = 0; i < inside.size(); ++i) {
    const char16_t first = foldedCase(inside[i]);
    const bool isRange = i + 2 < inside.size() && inside[i + 1] == u'-';
    if (isRange) i += 2;
    const char16_t last = foldedCase(inside[i]);
    if (last < first) throw error::invalidPattern();
    element.ranges.emplace_back(first, last);
  }
  elements_.push_back(std::move(element));
  return close;
}

bool LikePattern::Element::accepts(char16_t folded) const {
  const bool isIn = std::ranges::any_of(ranges, [folded](const auto& range) {
    return folded >= range.first && folded <= range.second;
  });
  return isIn != negated;
}

bool LikePattern::matches(std::u16string_view text) const {
  // When the elements after a run don't match, only the last run has to match one character more.
  std::optional<std::size_t> lastRun;
  std::size_t element = 0;
  std::size_t position = 0;
  std::size_t runEnd = 0;
  while (position < text.size()) {
    if (isRunAt(element)) {
      lastRun = element++;
      runEnd = position;
    } else if (element < elements_.size() &&
               elements_[element].accepts(foldedCase(text[position]))) {
      ++element;
      ++position;
    } else if (lastRun) {
      element = *lastRun + 1;
      position = ++runEnd;
    } else {
      return false;
    }
  }
  return element + (isRunAt(element) ? 1 : 0) == elements_.size();
}

}  // namespace jetsql
