#pragma once

#include <cstddef>
#include <string_view>

namespace forms {

/// Part of a text, in 16-bit units from its start.
struct TextPart {
  std::size_t offset = 0;
  std::size_t length = std::u16string_view::npos;  ///< to the end

  constexpr std::u16string_view of(std::u16string_view text) const {
    return offset < text.size() ? text.substr(offset, length) : std::u16string_view();
  }
};

/// The positions of name and id in an entry of a list. Screen readers read a row by its name; an id
/// that comes first is painted in a column of its own, so that the names begin at one position.
struct EntryParts {
  TextPart name{};
  TextPart id{.offset = std::u16string_view::npos};
};

}  // namespace forms
