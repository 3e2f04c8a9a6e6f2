#include "platform/jetsql/functions/Like.h"

#include <algorithm>

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
      if (elements_.empty() || elements_.back().kind != Element::Kind::Run) {
        elements_.push_back({Element::Kind::Run, 0, false, {}});
      }
    } else if (c == (isLike ? u'?' : u'_')) {
      elements_.push_back({Element::Kind::Any, 0, false, {}});
    } else if (isLike && c == u'#') {
      elements_.push_back({Element::Kind::Digit, 0, false, {}});
    } else if (c == u'[') {
      i = readSet(pattern, i);
    } else {
      elements_.push_back({Element::Kind::Character, foldedCase(c), false, {}});
    }
  }
}

/// Reads the brackets that open at this index; returns the index at which they close.
std::size_t LikePattern::readSet(std::u16string_view pattern, std::size_t position) {
  const std::size_t close = pattern.find(u']', position + 1);
  if (close == std::u16string_view::npos) {
    throw error::invalidPattern();
  }
  std::u16string_view inside = pattern.substr(position + 1, close - position - 1);
  if (inside.empty()) return close;
  Element element{Element::Kind::Set, 0, false, {}};
  if (inside.size() > 1 && inside.front() == u'!') {
    element.negated = true;
    inside.remove_prefix(1);
  }
  for (std::size_t i = 0; i < inside.size(); ++i) {
    const char16_t first = foldedCase(inside[i]);
    char16_t last = first;
    if (i + 2 < inside.size() && inside[i + 1] == u'-') {
      last = foldedCase(inside[i + 2]);
      i += 2;
    }
    if (last < first) throw error::invalidPattern();
    element.ranges.emplace_back(first, last);
  }
  elements_.push_back(std::move(element));
  return close;
}

bool LikePattern::accepts(const Element& element, char16_t character) {
  switch (element.kind) {
    case Element::Kind::Any:
      return true;
    case Element::Kind::Digit:
      return runtime::isDigit(character);
    case Element::Kind::Character:
      return foldedCase(character) == element.character;
    case Element::Kind::Set: {
      const char16_t folded = foldedCase(character);
      const bool isIn = std::ranges::any_of(element.ranges, [folded](const auto& range) {
        return folded >= range.first && folded <= range.second;
      });
      return isIn != element.negated;
    }
    case Element::Kind::Run:
      break;
  }
  return false;
}

bool LikePattern::matches(std::u16string_view text) const {
  // When the elements after a run don't match, only the last run has to match one character more.
  constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::size_t element = 0;
  std::size_t position = 0;
  std::size_t lastRun = kNone;
  std::size_t runEnd = 0;
  while (position < text.size()) {
    if (element < elements_.size() && elements_[element].kind == Element::Kind::Run) {
      lastRun = element++;
      runEnd = position;
    } else if (element < elements_.size() && accepts(elements_[element], text[position])) {
      ++element;
      ++position;
    } else if (lastRun != kNone) {
      element = lastRun + 1;
      position = ++runEnd;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].kind == Element::Kind::Run) ++element;
  return element == elements_.size();
}

}  // namespace jetsql
