#include "platform/jetsql/syntax/DateText.h"

#include <chrono>
#include <cmath>
#include <span>
#include <vector>

#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

constexpr std::int64_t kSecondsADay = runtime::Date::kSecondsADay;
constexpr std::chrono::sys_days kEpoch{std::chrono::year{1899} / 12 / 30};

struct Number {
  int value = 0;
  std::size_t digits = 0;
};

/// The structure of a text that may be a date.
struct Shape {
  /// The text with each number as `9`, "am" as `a`, "pm" as `p`, and without blanks.
  std::u16string marks;
  std::vector<Number> numbers;
};

/// Absent for texts with other words, or with numbers too long for a year.
std::optional<Shape> shapeOf(std::u16string_view text) {
  Shape shape;
  while (!text.empty()) {
    const bool isNumber = runtime::isDigit(text[0]);
    const bool isWord = runtime::isAsciiLetter(text[0]);
    std::size_t size = 1;
    while (size < text.size() && ((isNumber && runtime::isDigit(text[size])) ||
                                  (isWord && runtime::isAsciiLetter(text[size])))) {
      ++size;
    }
    const std::u16string_view word = text.substr(0, size);
    text.remove_prefix(size);
    if (isNumber) {
      if (size > 4) return std::nullopt;
      shape.marks += u'9';
      Number& number = shape.numbers.emplace_back(Number{0, size});
      for (const char16_t digit : word) number.value = number.value * 10 + (digit - u'0');
    } else if (isWord) {
      const bool isMorning = sameWord(word, u"am");
      if (!isMorning && !sameWord(word, u"pm")) return std::nullopt;
      shape.marks += isMorning ? u'a' : u'p';
    } else if (word != u" " && word != u"\t") {
      shape.marks += word;
    }
  }
  return shape;
}

/// Sets the day, if it exists.
bool setDay(CivilTime& time, int year, int month, int day) {
  const bool isDay = year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day <= 31 &&
                     (std::chrono::year{year} / month / day).ok();
  if (isDay) {
    time.year = year;
    time.month = month;
    time.day = day;
  }
  return isDay;
}

bool readDay(CivilTime& time, std::span<const Number, 3> numbers) {
  const Number first = numbers[0];
  const Number second = numbers[1];
  const Number third = numbers[2];
  if (first.digits > 2) return setDay(time, first.value, second.value, third.value);
  // A two-digit year is between 1930 and 2029.
  const int century = third.digits > 2 ? 0 : (third.value < 30 ? 2000 : 1900);
  // The month comes first unless it can't be one.
  return setDay(time, century + third.value, first.value, second.value) ||
         setDay(time, century + third.value, second.value, first.value);
}

bool readTime(CivilTime& time, std::u16string_view marks, std::span<const Number> numbers) {
  const char16_t half = marks.empty() ? u'\0' : marks.back();
  const bool hasHalf = half == u'a' || half == u'p';
  if (hasHalf) marks.remove_suffix(1);
  if (marks != u"9:9" && marks != u"9:9:9" && !(hasHalf && marks == u"9")) return false;
  const int hour = numbers[0].value;
  time.hour = hasHalf ? hour % 12 + (half == u'p' ? 12 : 0) : hour;
  if (numbers.size() > 1) time.minute = numbers[1].value;
  if (numbers.size() > 2) time.second = numbers[2].value;
  const bool isHour = hasHalf ? hour >= 1 && hour <= 12 : hour < 24;
  return isHour && time.minute < 60 && time.second < 60;
}

}  // namespace

double daysFromCivil(const CivilTime& time) {
  // The days that DateSerial adds are 16-bit numbers: too few to lead from a year beyond these
  // limits back to a valid date.
  constexpr std::int64_t kFarYear = 20000;
  const std::int64_t months = std::int64_t{time.year} * 12 + time.month - 1;
  if (std::abs(months) > kFarYear * 12) throw error::overflow();
  const auto month = std::chrono::year{0} / 1 + std::chrono::months{months};
  const std::chrono::seconds clock = std::chrono::hours{time.hour} +
                                     std::chrono::minutes{time.minute} +
                                     std::chrono::seconds{time.second};
  const auto carried = std::chrono::floor<std::chrono::days>(clock);
  const auto day = std::chrono::sys_days{month / 1} + std::chrono::days{time.day - 1} + carried;
  const auto days = static_cast<double>((day - kEpoch).count());
  const double fraction =
      static_cast<double>((clock - carried).count()) / static_cast<double>(kSecondsADay);
  return days < 0 ? days - fraction : days + fraction;
}

CivilTime civilFromDays(double days) {
  if (!runtime::Date{days}.isInCalendar()) throw error::overflow();
  const double fraction = std::fabs(days - std::trunc(days));
  const std::int64_t seconds = std::llround(fraction * static_cast<double>(kSecondsADay));
  const std::int64_t fullDays = static_cast<std::int64_t>(days) + seconds / kSecondsADay;
  const std::chrono::year_month_day date{kEpoch + std::chrono::days{fullDays}};
  const std::chrono::hh_mm_ss clock{std::chrono::seconds{seconds % kSecondsADay}};
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()),
          static_cast<int>(clock.seconds().count())};
}

int weekday(double days) {
  const std::chrono::weekday day{kEpoch + std::chrono::days{static_cast<std::int64_t>(days)}};
  return static_cast<int>(day.c_encoding()) + 1;
}

std::optional<double> parseDate(std::u16string_view text) {
  const auto shape = shapeOf(text);
  if (!shape) return std::nullopt;
  CivilTime time;
  std::u16string_view marks = shape->marks;
  std::span<const Number> numbers = shape->numbers;
  if (marks.starts_with(u"9/9/9") || marks.starts_with(u"9-9-9")) {
    if (!readDay(time, numbers.first<3>())) return std::nullopt;
    numbers = numbers.subspan(3);
    marks.remove_prefix(5);
    if (marks.empty()) return daysFromCivil(time);
  }
  return readTime(time, marks, numbers) ? std::optional(daysFromCivil(time)) : std::nullopt;
}

std::u16string dateText(double days) {
  const CivilTime time = civilFromDays(days);
  std::u16string text;
  const bool hasTime = time.hour != 0 || time.minute != 0 || time.second != 0;
  if (std::trunc(days) != 0 || !hasTime) {
    text = runtime::toText(time.month) + u"/" + runtime::toText(time.day) + u"/" +
           runtime::toText(time.year);
  }
  if (!hasTime) return text;
  if (!text.empty()) text += u' ';
  text += runtime::toText((time.hour + 11) % 12 + 1) + u":" + runtime::toText(time.minute, 2) +
          u":" + runtime::toText(time.second, 2);
  return text + (time.hour < 12 ? u" AM" : u" PM");
}

}  // namespace jetsql
