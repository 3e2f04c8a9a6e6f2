#include "platform/runtime/Variant.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>

#include "platform/runtime/Conversion.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace runtime {
namespace {

/// The value with up to `digits` significant digits, as "12.5" or "1.5E+20".
std::u16string floatText(double value, int digits) {
  if (value == 0) return u"0";  // minus zero too
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::general, digits);
  std::u16string text = widened({buffer.data(), end.ptr});
  if (const std::size_t e = text.find(u'e'); e != text.npos) text[e] = u'E';
  return text;
}

std::u16string currencyText(Currency amount) {
  std::u16string text = amount.tenThousandths < 0 ? u"-" : u"";
  text += toText(std::abs(amount.tenThousandths / Currency::kOne));
  std::u16string fraction = toText(std::abs(amount.tenThousandths % Currency::kOne), 4);
  fraction.erase(fraction.find_last_not_of(u'0') + 1);
  if (!fraction.empty()) text += u"." + fraction;
  return text;
}

std::u16string dateText(Date date) {
  // A damaged date has no calendar day; its number is shown instead.
  if (!date.isInCalendar()) return floatText(date.days, 15);

  // Before day 0 the integer part counts days backwards, but the fraction is still the time since
  // midnight: -1.25 is 06:00 on 1899-12-29.
  auto day = static_cast<std::int64_t>(std::trunc(date.days));
  auto second = std::llround(std::abs(date.days - std::trunc(date.days)) * Date::kSecondsADay);
  day += second / Date::kSecondsADay;
  second %= Date::kSecondsADay;

  const std::chrono::sys_days calendarDay{std::chrono::days(day - Date::kDaysTo1970)};
  const std::chrono::year_month_day calendar(calendarDay);
  return toText(int{calendar.year()}, 4) + u"-" + toText(unsigned{calendar.month()}, 2) + u"-" +
         toText(unsigned{calendar.day()}, 2) + u" " + toText(second / 3600, 2) + u":" +
         toText(second / 60 % 60, 2) + u":" + toText(second % 60, 2);
}

std::u16string guidText(const Guid& guid) {
  std::u16string text = u"{";
  for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
    text += hexDigits(guid.bytes[i], 2);
  }
  return text + u"}";
}

struct ToText {
  std::u16string operator()(Null) const { throw RunTimeError(ErrorNumber::InvalidUseOfNull); }
  std::u16string operator()(bool value) const { return value ? u"True" : u"False"; }
  std::u16string operator()(std::uint8_t value) const { return runtime::toText(value); }
  std::u16string operator()(std::int16_t value) const { return runtime::toText(value); }
  std::u16string operator()(std::int32_t value) const { return runtime::toText(value); }
  std::u16string operator()(Currency value) const { return currencyText(value); }
  std::u16string operator()(float value) const { return floatText(value, 7); }
  std::u16string operator()(double value) const { return floatText(value, 15); }
  std::u16string operator()(Date value) const { return dateText(value); }
  std::u16string operator()(const std::u16string& value) const { return value; }
  std::u16string operator()(const Binary&) const { throw RunTimeError(ErrorNumber::TypeMismatch); }
  std::u16string operator()(const Guid& value) const { return guidText(value); }
  std::u16string operator()(const Decimal& value) const { return value.digits; }
};

struct ToLong {
  std::int32_t operator()(Null) const { throw RunTimeError(ErrorNumber::InvalidUseOfNull); }
  std::int32_t operator()(bool value) const { return value ? -1 : 0; }
  std::int32_t operator()(std::uint8_t value) const { return value; }
  std::int32_t operator()(std::int16_t value) const { return value; }
  std::int32_t operator()(std::int32_t value) const { return value; }
  std::int32_t operator()(Currency value) const {
    return runtime::toLong(std::u16string_view(currencyText(value)));
  }
  std::int32_t operator()(float value) const { return runtime::toLong(double{value}); }
  std::int32_t operator()(double value) const { return runtime::toLong(value); }
  std::int32_t operator()(Date value) const { return runtime::toLong(value.days); }
  std::int32_t operator()(const std::u16string& value) const { return runtime::toLong(value); }
  std::int32_t operator()(const Binary&) const { throw RunTimeError(ErrorNumber::TypeMismatch); }
  std::int32_t operator()(const Guid&) const { throw RunTimeError(ErrorNumber::TypeMismatch); }
  std::int32_t operator()(const Decimal& value) const { return runtime::toLong(value.digits); }
};

struct ToNumber {
  std::optional<double> operator()(bool value) const { return value ? -1 : 0; }
  std::optional<double> operator()(Currency value) const { return value.toDouble(); }
  std::optional<double> operator()(Date value) const { return value.days; }
  template <class T>
  std::optional<double> operator()(const T& value) const {
    if constexpr (std::is_arithmetic_v<T>)
      return value;
    else
      return std::nullopt;
  }
};

}  // namespace

std::u16string Variant::toText() const {
  return std::visit(ToText{}, value_);
}

std::int32_t Variant::toLong() const {
  return std::visit(ToLong{}, value_);
}

std::optional<double> Variant::number() const {
  return std::visit(ToNumber{}, value_);
}

std::u16string operator&(const Variant& value, std::u16string_view text) {
  std::u16string joined = value.isNull() ? std::u16string() : value.toText();
  joined += text;
  return joined;
}

}  // namespace runtime
