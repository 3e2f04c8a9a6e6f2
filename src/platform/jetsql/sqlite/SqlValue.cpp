#include "platform/jetsql/sqlite/SqlValue.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>

namespace jetsql {
namespace {

runtime::Variant integerValue(std::int64_t integer) {
  const bool fits = integer >= std::numeric_limits<std::int32_t>::min() &&
                    integer <= std::numeric_limits<std::int32_t>::max();
  if (!fits) return static_cast<double>(integer);
  return static_cast<std::int32_t>(integer);
}

runtime::Variant bytesValue(const std::uint8_t* bytes, std::size_t size, Type type) {
  if (type != Type::Guid) return runtime::Binary(bytes, bytes + size);
  runtime::Guid guid;
  std::copy_n(bytes, std::min(size, guid.bytes.size()), guid.bytes.begin());
  return guid;
}

}  // namespace

runtime::Variant sqlValue(sqlite3_value* value, Type type) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      if (type == Type::Currency) return runtime::Currency{sqlite3_value_int64(value)};
      return integerValue(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
      return sqlite3_value_double(value);
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(value));
      if (units == nullptr) throw std::bad_alloc();
      return std::u16string(units, static_cast<std::size_t>(sqlite3_value_bytes16(value)) / 2);
    }
    case SQLITE_BLOB:
      return bytesValue(static_cast<const std::uint8_t*>(sqlite3_value_blob(value)),
                        static_cast<std::size_t>(sqlite3_value_bytes(value)), type);
    default:
      return {};
  }
}

}  // namespace jetsql
