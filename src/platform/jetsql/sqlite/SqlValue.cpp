#include "platform/jetsql/sqlite/SqlValue.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/writing/WrittenStatement.h"

namespace jetsql {
namespace {

runtime::Variant integerValue(std::int64_t integer) {
  const bool fits = integer >= std::numeric_limits<std::int32_t>::min() &&
                    integer <= std::numeric_limits<std::int32_t>::max();
  if (!fits) return static_cast<double>(integer);
  return static_cast<std::int32_t>(integer);
}

/// The first character of a positive decimal's key. In a negative one's key all characters are
/// subtracted from nine, this one as well.
constexpr char16_t kPositive = u'5';
/// The digits before and after the point follow.
constexpr std::size_t kIntegerDigits = 39;
constexpr std::size_t kFractionDigits = 28;
static_assert(1 + kIntegerDigits + kFractionDigits == kDecimalKey);

}  // namespace

std::u16string decimalText(const runtime::Decimal& value) {
  std::u16string_view digits = value.digits;
  const bool negative = digits.find_first_of(u"123456789") != digits.npos && digits[0] == u'-';
  if (digits.starts_with(u'-')) digits.remove_prefix(1);
  const std::u16string_view integer = digits.substr(0, digits.find(u'.'));
  std::u16string_view fraction = digits.substr(std::min(integer.size() + 1, digits.size()));
  fraction = fraction.substr(0, fraction.find_last_not_of(u'0') + 1);
  std::u16string text(kDecimalKey, u'0');
  text[0] = kPositive;
  std::ranges::copy(integer, text.end() - kFractionDigits - std::ssize(integer));
  std::ranges::copy(fraction.substr(0, kFractionDigits), text.end() - kFractionDigits);
  if (negative) {
    for (char16_t& digit : text) digit = static_cast<char16_t>(u'0' + u'9' - digit);
    text += u'-';
  }
  text += integer;
  return fraction.empty() ? text : (text += u'.').append(fraction);
}

runtime::Variant bytesValue(std::span<const std::uint8_t> bytes, Type type) {
  if (type != Type::Guid) return runtime::Binary(bytes.begin(), bytes.end());
  runtime::Guid guid;
  std::copy_n(bytes.begin(), std::min(bytes.size(), guid.bytes.size()), guid.bytes.begin());
  return guid;
}

runtime::Variant sqlValue(sqlite3_value* value, Type type) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      if (type == Type::Currency) return runtime::Currency{sqlite3_value_int64(value)};
      return integerValue(sqlite3_value_int64(value));
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(value);
      if (!std::isfinite(number)) throw error::overflow();
      return number;
    }
    case SQLITE_TEXT: {
      const auto* units = static_cast<const char16_t*>(sqlite3_value_text16(value));
      if (units == nullptr) throw std::bad_alloc();
      const auto size = static_cast<std::size_t>(sqlite3_value_bytes16(value)) / 2;
      std::u16string text(units, size);
      if (type == Type::Decimal) return runtime::Decimal{text.substr(kDecimalKey)};
      return text;
    }
    case SQLITE_BLOB:
      return bytesValue({static_cast<const std::uint8_t*>(sqlite3_value_blob(value)),
                         static_cast<std::size_t>(sqlite3_value_bytes(value))},
                        type);
    default:
      return {};
  }
}

}  // namespace jetsql
