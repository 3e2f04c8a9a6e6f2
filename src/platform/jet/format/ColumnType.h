#pragma once

#include <cstdint>

namespace jet {

/// Types of a table's columns, by their number in the file.
enum class ColumnType : std::uint8_t {
  Boolean = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Currency = 5,
  Single = 6,
  Double = 7,
  DateTime = 8,
  Binary = 9,
  Text = 10,
  Ole = 11,
  Memo = 12,
  Guid = 15,
  Numeric = 16,
  Block = 17,  ///< fixed binary of some system tables
};

/// True for the types whose values may lie on pages of their own.
inline constexpr bool isLongValue(ColumnType type) {
  return type == ColumnType::Ole || type == ColumnType::Memo;
}
/// True for text and memo.
inline constexpr bool isText(ColumnType type) {
  return type == ColumnType::Text || type == ColumnType::Memo;
}

}  // namespace jet
