#include "platform/jetsql/functions/Type.h"

#include <algorithm>

namespace jetsql {

Type typeOf(jet::ColumnType column) {
  // Both enumerations begin with the same types in the same order.
  static_assert(Type::Boolean == Type(jet::ColumnType::Boolean));
  static_assert(Type::Date == Type(jet::ColumnType::DateTime));
  if (column <= jet::ColumnType::DateTime) return static_cast<Type>(column);
  if (column == jet::ColumnType::Numeric) return Type::Decimal;
  if (column == jet::ColumnType::Text) return Type::Text;
  if (column == jet::ColumnType::Memo) return Type::Memo;
  return column == jet::ColumnType::Guid ? Type::Guid : Type::Binary;
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
