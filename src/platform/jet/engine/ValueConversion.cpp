#include "platform/jet/engine/ValueConversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <variant>

#include "platform/jet/format/EngineError.h"
#include "platform/jet/format/TextKey.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace jet {
namespace {

using runtime::Variant;

constexpr std::size_t kCurrencyScale = 4;

std::optional<bool> namedTruth(std::u16string_view text) {
  for (const char16_t* name : {u"True", u"Yes", u"On"})
    if (sameName(text, name)) return true;
  for (const char16_t* name : {u"False", u"No", u"Off"})
    if (sameName(text, name)) return false;
  return std::nullopt;
}

double textNumber(std::u16string_view text) {
  try {
    return runtime::toDouble(text);
  } catch (const runtime::RunTimeError& error) {
    if (error.number() == static_cast<std::int32_t>(runtime::ErrorNumber::Overflow))
      throw error::tooLarge();
  }
  throw runtime::providerMismatch();
}

double numberOf(const Variant& value) {
  if (const std::optional<double> number = value.number()) return *number;
  if (const auto* text = std::get_if<std::u16string>(&value.get())) return textNumber(*text);
  if (const auto* decimal = std::get_if<runtime::Decimal>(&value.get()))
    return textNumber(decimal->digits);
  throw runtime::providerMismatch();
}

template <class T>
T toInteger(const Variant& value) {
  return runtime::rounded<T>(numberOf(value), error::tooLarge);
}

/// The digits of a plain decimal number in a text; converting it to a double would change them.
std::optional<std::string> plainDecimal(const Variant& value) {
  std::u16string text;
  if (const auto* own = std::get_if<std::u16string>(&value.get()))
    text = *own;
  else if (const auto* decimal = std::get_if<runtime::Decimal>(&value.get()))
    text = decimal->digits;
  const std::size_t first = std::min(text.find_first_not_of(u' '), text.size());
  std::string plain(text.begin() + static_cast<std::ptrdiff_t>(first), text.end());
  plain.erase(plain.find_last_not_of(' ') + 1);
  const std::size_t sign = plain.starts_with('-') || plain.starts_with('+') ? 1 : 0;
  const bool digits = plain.find_first_of("0123456789") != std::string::npos;
  const bool onlyThose = plain.find_first_not_of("0123456789.", sign) == std::string::npos;
  if (!digits || !onlyThose || std::ranges::count(plain, '.') > 1) return std::nullopt;
  const bool ascii = std::ranges::all_of(text, [](char16_t c) { return c < 0x80; });
  return ascii ? std::optional(plain) : std::nullopt;
}

/// Rounds a plain decimal number half to even; returns sign and digits without the point.
std::string roundedDigits(const std::string& plain, std::size_t scale) {
  const bool negative = plain.starts_with('-');
  const std::size_t front = negative || plain.starts_with('+') ? 1 : 0;
  const std::size_t point = std::min(plain.find('.'), plain.size());
  std::string digits = "0" + plain.substr(front, point - front);
  const std::string fraction = point < plain.size() ? plain.substr(point + 1) : "";
  digits += fraction.substr(0, scale);
  digits.append(scale - std::min(scale, fraction.size()), '0');
  const std::string rest = fraction.size() > scale ? fraction.substr(scale) : "";
  const bool half = rest.starts_with('5') && rest.find_first_not_of('0', 1) == std::string::npos;
  const bool odd = (digits.back() - '0') % 2 != 0;
  if (half ? odd : !rest.empty() && rest[0] >= '5') {
    std::size_t at = digits.size() - 1;
    for (; digits[at] == '9'; --at) digits[at] = '0';
    ++digits[at];
  }
  return (negative ? "-" : "") + digits;
}

runtime::Currency currencyOf(const Variant& value) {
  if (const auto* exact = std::get_if<runtime::Currency>(&value.get())) return *exact;
  if (const std::optional<std::string> plain = plainDecimal(value)) {
    const std::string units = roundedDigits(*plain, kCurrencyScale);
    runtime::Currency amount;
    const auto [end, error] =
        std::from_chars(units.data(), units.data() + units.size(), amount.tenThousandths);
    if (error != std::errc()) throw error::tooLarge();
    return amount;
  }
  constexpr double kLimit = 9223372036854775808.0;
  const double units = std::nearbyint(numberOf(value) * runtime::Currency::kOne);
  if (!(units >= -kLimit && units < kLimit)) throw error::tooLarge();
  return {static_cast<std::int64_t>(units)};
}

runtime::Decimal decimalOf(const ColumnDefinition& column, const Variant& value) {
  std::optional<std::string> plain = plainDecimal(value);
  if (!plain) {
    constexpr double kLimit = 1e28;
    const double number = numberOf(value);
    if (!(std::abs(number) < kLimit)) throw error::tooLarge();
    std::array<char, 80> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 15);
    plain.emplace(text.data(), end.ptr);
  }
  std::string digits = roundedDigits(*plain, column.scale);
  const bool negative = digits.starts_with('-');
  digits.erase(0, std::min(digits.find_first_not_of("-0"), digits.size()));
  const bool zero = digits.empty();
  if (digits.size() > column.precision) throw error::tooLarge();
  if (digits.size() <= column.scale) digits.insert(0, column.scale + 1U - digits.size(), '0');
  if (column.scale > 0) digits.insert(digits.size() - column.scale, ".");
  if (negative && !zero) digits.insert(0, "-");
  return {runtime::widened(digits)};
}

float singleOf(const Variant& value) {
  const double number = numberOf(value);
  if (std::abs(number) > std::numeric_limits<float>::max()) throw error::tooLarge();
  return static_cast<float>(number);
}

bool booleanOf(const Variant& value) {
  if (const auto* text = std::get_if<std::u16string>(&value.get()))
    if (const std::optional<bool> named = namedTruth(*text)) return *named;
  return numberOf(value) != 0;
}

/// A calendar date as day number. The text form is the one that `toText` returns for a date.
runtime::Date dateOf(const Variant& value) {
  const auto* text = std::get_if<std::u16string>(&value.get());
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  const std::string plain = text == nullptr ? "" : runtime::toUtf8(*text);
  int read = 0;  // characters taken by the fields up to the day, the minute or the second
  const int fields = std::sscanf(plain.c_str(), "%4d-%2u-%2u%n %2u:%2u%n:%2u%n", &year, &month,
                                 &day, &read, &hour, &minute, &read, &second, &read);
  if (fields < 3) {
    const runtime::Date number{numberOf(value)};
    if (!number.isInCalendar()) throw error::tooLarge();
    return number;
  }
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  constexpr int kFirstYear = 100;
  if (!date.ok() || year < kFirstYear || hour > 23 || minute > 59 || second > 59 ||
      static_cast<std::size_t>(read) != plain.size())
    throw runtime::providerMismatch();
  const double days =
      std::chrono::sys_days(date).time_since_epoch().count() + runtime::Date::kDaysTo1970;
  const double time = (hour * 3600 + minute * 60 + second) / double{runtime::Date::kSecondsADay};
  return {days < 0 ? days - time : days + time};  // the time of day always counts up
}

std::u16string textOf(Version version, const ColumnDefinition& column, const Variant& value) {
  if (std::holds_alternative<runtime::Binary>(value.get())) throw runtime::providerMismatch();
  std::u16string text = value.toText();
  if (column.type == ColumnType::Text &&
      layoutOf(version).characterSize * text.size() > column.length)
    throw error::tooLarge();
  if (version == Version::Jet3 && runtime::fromCodePage(runtime::toCodePage(text)) != text)
    throw runtime::providerMismatch();
  return text;
}

runtime::Guid guidOf(const Variant& value) {
  if (const auto* guid = std::get_if<runtime::Guid>(&value.get())) return *guid;
  const auto* text = std::get_if<std::u16string>(&value.get());
  if (text == nullptr) throw runtime::providerMismatch();
  runtime::Guid guid;
  std::u16string digits = *text;
  if (digits.starts_with(u'{') && digits.ends_with(u'}'))
    digits = digits.substr(1, digits.size() - 2);
  std::erase(digits, u'-');
  if (digits.size() != 2 * guid.bytes.size()) throw runtime::providerMismatch();
  const std::string plain = runtime::toUtf8(digits);
  for (std::size_t i = 0; i < guid.bytes.size() && plain.size() == digits.size(); ++i) {
    const char* at = plain.data() + 2 * i;
    if (std::from_chars(at, at + 2, guid.bytes[i], 16).ptr != at + 2)
      throw runtime::providerMismatch();
  }
  return guid;
}

runtime::Binary bytesOf(const ColumnDefinition& column, const Variant& value) {
  const auto* bytes = std::get_if<runtime::Binary>(&value.get());
  if (bytes == nullptr) throw runtime::providerMismatch();
  if (column.type != ColumnType::Ole && bytes->size() > column.length) throw error::tooLarge();
  return *bytes;
}

}  // namespace

Variant convertTo(Version version, const ColumnDefinition& column, const Variant& value) {
  if (value.isNull())
    return column.type == ColumnType::Boolean ? Variant(false) : Variant(runtime::Null{});
  switch (column.type) {
    case ColumnType::Boolean:
      return booleanOf(value);
    case ColumnType::Byte:
      return toInteger<std::uint8_t>(value);
    case ColumnType::Integer:
      return toInteger<std::int16_t>(value);
    case ColumnType::Long:
      return toInteger<std::int32_t>(value);
    case ColumnType::Currency:
      return currencyOf(value);
    case ColumnType::Single:
      return singleOf(value);
    case ColumnType::Double:
      return numberOf(value);
    case ColumnType::DateTime:
      return dateOf(value);
    case ColumnType::Numeric:
      return decimalOf(column, value);
    case ColumnType::Text:
    case ColumnType::Memo:
      return textOf(version, column, value);
    case ColumnType::Guid:
      return guidOf(value);
    case ColumnType::Binary:
    case ColumnType::Ole:
    case ColumnType::Block:
      break;
  }
  return bytesOf(column, value);
}

}  // namespace jet
