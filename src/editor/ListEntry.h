#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// An entry of the levelled editor's item list: the description cut or filled to 30 characters, 100
/// blanks that push the id out of sight, the id in decimal. Only their positions separate the
/// parts.
namespace listentry {

std::u16string make(std::u16string_view description, std::u16string_view id);

/// The description, trimmed.
std::u16string descriptionOf(std::u16string_view entry);
/// Raises InvalidProcedureCall for an entry shorter than 130 characters, TypeMismatch or Overflow
/// for an id that is no 16-bit number.
std::int16_t idOf(std::u16string_view entry);

}  // namespace listentry
