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

/// The positions of name and id in a list entry. Screen readers announce a row by its name. An id
/// that comes first is painted in a fixed-width column, so that the names are aligned.
struct EntryParts {
  TextPart name{};
  TextPart id{.offset = std::u16string_view::npos};  ///< the default: no id
};

}  // namespace forms
