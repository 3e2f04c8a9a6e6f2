#include <algorithm>
#include <cmath>

#include "platform/jetsql/DateText.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/SqlFunction.h"
#include "platform/jetsql/Token.h"

namespace jetsql {
namespace {

/// Intervals of DateAdd, DateDiff and DatePart.
enum class Interval : std::uint8_t {
  Year,
  Quarter,
  Month,
  Week,
  Day,
  Hour,
  Minute,
  Second,
  Weekday,
  DayOfYear
};

struct NamedInterval {
  std::u16string_view name;
  Interval interval;
};
constexpr NamedInterval kIntervals[] = {{u"yyyy", Interval::Year}, {u"q", Interval::Quarter},
                                        {u"m", Interval::Month},   {u"ww", Interval::Week},
                                        {u"d", Interval::Day},     {u"y", Interval::DayOfYear},
                                        {u"h", Interval::Hour},    {u"n", Interval::Minute},
                                        {u"s", Interval::Second},  {u"w", Interval::Weekday}};

Interval intervalOf(std::u16string_view name) {
  for (const NamedInterval& each : kIntervals) {
    if (sameWord(each.name, name)) return each.interval;
  }
  throw error::invalidCall();
}

template <int CivilTime::*member>
void part(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveWhole(civilFromDays(call.date(0)).*member);
}

void weekdayOf(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double days = call.date(0);
  civilFromDays(days);
  call.giveWhole(weekday(days));
}

/// Raises the overflow error for a date outside the calendar.
void giveDate(const FunctionCall& call, double days) {
  civilFromDays(days);
  call.giveNumber(days);
}

int daysOfMonth(int year, int month) {
  const double first = daysFromCivil({year, month, 1, 0, 0, 0});
  return static_cast<int>(daysFromCivil({year, month + 1, 1, 0, 0, 0}) - first);
}

void dateAdd(const FunctionCall& call) {
  if (call.hasNull()) return;
  const Interval interval = intervalOf(call.text(0));
  const std::int32_t count = call.whole(1);
  constexpr std::int32_t kMost = 100'000'000;
  if (std::abs(std::int64_t{count}) > kMost) throw error::overflow();
  const double days = call.date(2);
  CivilTime time = civilFromDays(days);
  constexpr double kSecondsADay = 86400;
  const double clock = time.hour * 3600.0 + time.minute * 60.0 + time.second;
  double seconds = 0;
  switch (interval) {
    case Interval::Year:
    case Interval::Quarter:
    case Interval::Month: {
      const int months = interval == Interval::Year ? 12 : (interval == Interval::Quarter ? 3 : 1);
      const std::int64_t total =
          std::int64_t{time.year} * 12 + time.month - 1 + std::int64_t{count} * months;
      if (total < 0 || total > 12 * 9999 + 11) throw error::overflow();
      time.year = static_cast<int>(total / 12);
      time.month = static_cast<int>(total % 12) + 1;
      // A day that the month doesn't have becomes its last one.
      time.day = std::min(time.day, daysOfMonth(time.year, time.month));
      return giveDate(call, daysFromCivil(time));
    }
    case Interval::Week:
      seconds = count * 7.0 * kSecondsADay;
      break;
    case Interval::Day:
    case Interval::DayOfYear:
    case Interval::Weekday:
      seconds = count * kSecondsADay;
      break;
    case Interval::Hour:
      seconds = count * 3600.0;
      break;
    case Interval::Minute:
      seconds = count * 60.0;
      break;
    case Interval::Second:
      seconds = count;
      break;
  }
  const double moved = clock + seconds;
  const double wholeDays = std::floor(moved / kSecondsADay);
  CivilTime result = civilFromDays(std::trunc(days) + wholeDays);
  const auto rest = static_cast<int>(moved - wholeDays * kSecondsADay);
  result.hour = 0;
  result.minute = 0;
  result.second = rest;
  giveDate(call, daysFromCivil(result));
}

/// Counts the boundaries between the intervals of two dates.
void dateDiff(const FunctionCall& call) {
  if (call.hasNull()) return;
  const auto position = [interval = intervalOf(call.text(0))](double days) -> std::int64_t {
    const CivilTime time = civilFromDays(days);
    const auto day =
        static_cast<std::int64_t>(daysFromCivil({time.year, time.month, time.day, 0, 0, 0}));
    switch (interval) {
      case Interval::Year:
        return time.year;
      case Interval::Quarter:
        return std::int64_t{time.year} * 4 + (time.month - 1) / 3;
      case Interval::Month:
        return std::int64_t{time.year} * 12 + time.month;
      case Interval::Week:
        // Weeks begin with Sunday; day 1 was one.
        return static_cast<std::int64_t>(std::floor(static_cast<double>(day - 1) / 7.0));
      case Interval::Hour:
        return day * 24 + time.hour;
      case Interval::Minute:
        return (day * 24 + time.hour) * 60 + time.minute;
      case Interval::Second:
        return ((day * 24 + time.hour) * 60 + time.minute) * 60 + time.second;
      default:
        return day;
    }
  };
  std::int64_t difference = position(call.date(2)) - position(call.date(1));
  if (intervalOf(call.text(0)) == Interval::Weekday) difference /= 7;
  call.giveWhole(difference);
}

void datePart(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double days = call.date(1);
  const CivilTime time = civilFromDays(days);
  const double newYear = daysFromCivil({time.year, 1, 1, 0, 0, 0});
  const double day = daysFromCivil({time.year, time.month, time.day, 0, 0, 0});
  switch (intervalOf(call.text(0))) {
    case Interval::Year:
      return call.giveWhole(time.year);
    case Interval::Quarter:
      return call.giveWhole((time.month + 2) / 3);
    case Interval::Month:
      return call.giveWhole(time.month);
    case Interval::Week:
      return call.giveWhole(static_cast<int>(day - newYear + weekday(newYear) - 1) / 7 + 1);
    case Interval::Day:
      return call.giveWhole(time.day);
    case Interval::DayOfYear:
      return call.giveWhole(static_cast<int>(day - newYear) + 1);
    case Interval::Weekday:
      return call.giveWhole(weekday(days));
    case Interval::Hour:
      return call.giveWhole(time.hour);
    case Interval::Minute:
      return call.giveWhole(time.minute);
    case Interval::Second:
      return call.giveWhole(time.second);
  }
}

/// A part of DateSerial or TimeSerial, which takes 16-bit numbers.
int serialPart(const FunctionCall& call, int argument) {
  const std::int32_t value = call.whole(argument);
  if (value < -32768 || value > 32767) throw error::overflow();
  return value;
}

void dateSerial(const FunctionCall& call) {
  if (call.hasNull()) return;
  int year = serialPart(call, 0);
  if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
  giveDate(call, daysFromCivil({year, serialPart(call, 1), serialPart(call, 2), 0, 0, 0}));
}

void timeSerial(const FunctionCall& call) {
  if (call.hasNull()) return;
  giveDate(call, daysFromCivil({1899, 12, 30, serialPart(call, 0), serialPart(call, 1),
                                serialPart(call, 2)}));
}

constexpr SqlFunction kFunctions[] = {
    {"jet_year", part<&CivilTime::year>, nullptr},
    {"jet_month", part<&CivilTime::month>, nullptr},
    {"jet_day", part<&CivilTime::day>, nullptr},
    {"jet_hour", part<&CivilTime::hour>, nullptr},
    {"jet_minute", part<&CivilTime::minute>, nullptr},
    {"jet_second", part<&CivilTime::second>, nullptr},
    {"jet_weekday", weekdayOf, nullptr},
    {"jet_dateadd", dateAdd, nullptr},
    {"jet_datediff", dateDiff, nullptr},
    {"jet_datepart", datePart, nullptr},
    {"jet_dateserial", dateSerial, nullptr},
    {"jet_timeserial", timeSerial, nullptr},
};

}  // namespace

std::span<const SqlFunction> dateFunctions() {
  return kFunctions;
}

}  // namespace jetsql
