#include "platform/jetsql/sqlite/CalculatedValue.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <string>

#include "platform/jetsql/functions/ConversionFunctions.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

template <class Whole>
runtime::Variant wholeValue(double number) {
  const double rounded = std::nearbyint(number);
  if (!(rounded >= std::numeric_limits<Whole>::min()) ||
      !(rounded <= std::numeric_limits<Whole>::max())) {
    throw error::overflow();
  }
  return static_cast<Whole>(rounded);
}

runtime::Variant numberValue(double number, Type type, bool isWhole) {
  switch (type) {
    case Type::Boolean:
      return number != 0;
    case Type::Byte:
      return wholeValue<std::uint8_t>(number);
    case Type::Integer:
      return wholeValue<std::int16_t>(number);
    case Type::Long:
      return wholeValue<std::int32_t>(number);
    case Type::Currency:
      return runtime::Currency{tenThousandths(number)};
    case Type::Single:
      return static_cast<float>(number);
    case Type::Date:
      return runtime::Date{number};
    case Type::Decimal:
      return runtime::Decimal{numberText(number)};
    case Type::Double:
      return number;
    case Type::Null:
    case Type::Text:
    case Type::Memo:
    case Type::Guid:
    case Type::Binary:
    case Type::Any:
      break;
  }
  const bool fits = isWhole && number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max();
  return fits ? runtime::Variant(static_cast<std::int32_t>(number)) : runtime::Variant(number);
}

}  // namespace

runtime::Variant calculatedValue(sqlite3_value* value, Type type) {
  const int kind = sqlite3_value_type(value);
  switch (kind) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      return numberValue(sqlite3_value_double(value), type, kind == SQLITE_INTEGER);
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(value));
      if (units == nullptr) throw std::bad_alloc();
      return std::u16string(units, static_cast<std::size_t>(sqlite3_value_bytes16(value)) / 2);
    }
    case SQLITE_BLOB: {
      const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
      return runtime::Binary(bytes, bytes + sqlite3_value_bytes(value));
    }
    default:
      return {};
  }
}

}  // namespace jetsql
