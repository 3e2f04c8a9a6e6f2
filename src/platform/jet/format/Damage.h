#pragma once

#include <cstddef>
#include <string_view>

#include "platform/jet/format/Numbers.h"

namespace jet {

/// Where in which file something is stored, for the text of an error. The texts must outlive it.
struct Location {
  std::u16string_view file;
  std::u16string_view table;
  PageNumber page;

  Location at(PageNumber otherPage) const { return {file, table, otherPage}; }
};

/// Bytes that exceed the structure that is said to hold them: the file, a page, a row or another.
struct Misfit {
  std::size_t offset = 0;  ///< of the first byte, from the structure's start
  std::size_t size = 0;
  std::size_t available = 0;  ///< size of the structure
};

/// Raises the general error for damage at `location`, which `how` describes.
[[noreturn]] void raiseDamaged(const Location& location, std::u16string_view how);
/// The same, with the bytes that don't fit.
[[noreturn]] void raiseDamaged(const Location& location, std::u16string_view how,
                               const Misfit& misfit);

/// Raises the general error for a sound file that can't be changed safely; `why` is the reason.
[[noreturn]] void raiseUnsupported(const Location& location, std::u16string_view why);

}  // namespace jet
