#pragma once

#include <cstdint>

#include "platform/jet/format/ColumnType.h"

namespace jetsql {

/// The type of an expression's value, as far as it is known from the statement alone.
enum class Type : std::uint8_t {
  Null,  ///< nothing but null
  Boolean,
  Byte,
  Integer,
  Long,
  Currency,
  Single,
  Double,
  Date,
  Decimal,
  Text,
  Memo,
  Guid,
  Binary,
  Any,  ///< number or text, from row to row
};

Type typeOf(jet::ColumnType column);

inline constexpr bool isTextual(Type type) {
  return type == Type::Text || type == Type::Memo;
}
/// True for types that compare and calculate as numbers, dates and truth values included.
inline constexpr bool isNumeric(Type type) {
  return type >= Type::Boolean && type <= Type::Decimal;
}

/// True for integers of up to 32 bits, truth values included.
inline constexpr bool isInteger(Type type) {
  return type >= Type::Boolean && type <= Type::Long;
}

/// The type that holds values of both.
Type commonType(Type a, Type b);
/// The type of a sum, difference or product.
Type arithmeticType(Type a, Type b);

}  // namespace jetsql
