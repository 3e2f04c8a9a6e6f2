#pragma once

#include <cstdint>
#include <string_view>

namespace jet {

/// Where in which file something stands, for the words of an error. The texts outlive it.
struct Place {
  std::u16string_view file;
  std::u16string_view table;
  std::uint32_t page = 0;

  Place at(std::uint32_t otherPage) const { return {file, table, otherPage}; }
};

/// Raises the general error: the file is damaged there, and how.
[[noreturn]] void raiseDamaged(const Place& place, std::u16string_view how);

/// Raises the general error: the file is sound, but this can't be written safely, and why.
[[noreturn]] void raiseUnsupported(const Place& place, std::u16string_view why);

}  // namespace jet
