#pragma once

#include <cstdint>
#include <string_view>

namespace jet {

/// Provider's number for a failure without a number of its own.
inline constexpr std::int32_t kEngineError = -2147467259;

/// Where in which file something stands, for the words of an error. The texts outlive it.
struct Place {
  std::u16string_view file;
  std::u16string_view table;
  std::uint32_t page = 0;

  Place at(std::uint32_t otherPage) const { return {file, table, otherPage}; }
};

/// Raises -2147467259: the file is damaged there, and how.
[[noreturn]] void raiseDamaged(const Place& place, std::u16string_view how);

/// Raises -2147467259: the file is sound, but this can't be written safely, and why.
[[noreturn]] void raiseUnsupported(const Place& place, std::u16string_view why);

}  // namespace jet
