#include "platform/jetsql/functions/Type.h"

#include <algorithm>

namespace jetsql {

Type typeOf(jet::ColumnType column) {
  switch (column) {
    case jet::ColumnType::Boolean:
      return Type::Boolean;
    case jet::ColumnType::Byte:
      return Type::Byte;
    case jet::ColumnType::Integer:
      return Type::Integer;
    case jet::ColumnType::Long:
      return Type::Long;
    case jet::ColumnType::Currency:
      return Type::Currency;
    case jet::ColumnType::Single:
      return Type::Single;
    case jet::ColumnType::Double:
      return Type::Double;
    case jet::ColumnType::DateTime:
      return Type::Date;
    case jet::ColumnType::Numeric:
      return Type::Decimal;
    case jet::ColumnType::Text:
      return Type::Text;
    case jet::ColumnType::Memo:
      return Type::Memo;
    case jet::ColumnType::Guid:
      return Type::Guid;
    case jet::ColumnType::Binary:
    case jet::ColumnType::Ole:
    case jet::ColumnType::Block:
      return Type::Binary;
  }
  return Type::Binary;
}

Type commonType(Type a, Type b) {
  if (a == b || b == Type::Null) return a;
  if (a == Type::Null) return b;
  if (isTextual(a) && isTextual(b)) return Type::Memo;
  if (!isNumeric(a) || !isNumeric(b)) return Type::Any;
  return arithmeticType(a, b);
}

Type arithmeticType(Type a, Type b) {
  const auto [low, high] = std::minmax(a, b);
  if (low == Type::Null || high == Type::Any || isTextual(high)) return Type::Any;
  if (high == Type::Date) return Type::Date;
  if (high == Type::Decimal) return Type::Double;
  if (high <= Type::Long) return Type::Long;
  // A long has more digits than a single.
  if (high == Type::Single && low >= Type::Long) return Type::Double;
  return high;
}

}  // namespace jetsql
