#pragma once

#include <cstddef>
#include <string_view>

#include "platform/jet/format/Numbers.h"

namespace jet {

/// Where in which file something stands, for the words of an error. The texts outlive it.
struct Place {
  std::u16string_view file;
  std::u16string_view table;
  PageNumber page;

  Place at(PageNumber otherPage) const { return {file, table, otherPage}; }
};

/// Bytes that don't fit where they are said to be: in the file, a page, a row or another structure.
struct Misfit {
  std::size_t offset = 0;  ///< of their first, from the structure's beginning
  std::size_t size = 0;
  std::size_t available = 0;  ///< bytes of the structure
};

/// Raises the general error: the file is damaged there, and how.
[[noreturn]] void raiseDamaged(const Place& place, std::u16string_view how);
/// The same with the bytes that don't fit.
[[noreturn]] void raiseDamaged(const Place& place, std::u16string_view how, const Misfit& misfit);

/// Raises the general error: the file is sound, but this can't be written safely, and why.
[[noreturn]] void raiseUnsupported(const Place& place, std::u16string_view why);

}  // namespace jet
