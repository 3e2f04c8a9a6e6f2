#include "platform/jetsql/functions/DateFunctions.h"

#include <algorithm>
#include <cmath>

#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

constexpr std::int64_t kSecondsADay = runtime::Date::kSecondsADay;

/// An interval of DateAdd, DateDiff and DatePart: a number of months, or a number of seconds. `w`
/// stands for days in DateAdd, for weeks in DateDiff and for the day of the week in DatePart.
struct Interval {
  std::u16string_view name;
  int months;
  std::int64_t seconds;
};
constexpr Interval kIntervals[] = {{u"yyyy", 12, 0},
                                   {u"q", 3, 0},
                                   {u"m", 1, 0},
                                   {u"ww", 0, 7 * kSecondsADay},
                                   {u"d", 0, kSecondsADay},
                                   {u"y", 0, kSecondsADay},
                                   {u"w", 0, kSecondsADay},
                                   {u"h", 0, 3600},
                                   {u"n", 0, 60},
                                   {u"s", 0, 1}};

const Interval& intervalOf(std::u16string_view name) {
  for (const Interval& each : kIntervals) {
    if (sameWord(each.name, name)) return each;
  }
  throw error::invalidCall();
}

template <int CivilTime::*member>
void part(const FunctionCall& call) {
  call.setInteger(civilFromDays(call.date(0)).*member);
}

void weekdayOf(const FunctionCall& call) {
  const double days = call.date(0);
  civilFromDays(days);
  call.setInteger(weekday(days));
}

/// Raises the overflow error for a date outside the calendar.
void setDate(const FunctionCall& call, double days) {
  civilFromDays(days);
  call.setNumber(days);
}

double dayOf(const CivilTime& time) {
  return daysFromCivil({time.year, time.month, time.day, 0, 0, 0});
}

int secondOfDay(const CivilTime& time) {
  return (time.hour * 60 + time.minute) * 60 + time.second;
}

void dateAdd(const FunctionCall& call) {
  const Interval& interval = intervalOf(call.text(0));
  const std::int32_t count = call.integer(1);
  constexpr std::int32_t kMost = 100'000'000;
  if (count < -kMost || count > kMost) throw error::overflow();
  CivilTime time = civilFromDays(call.date(2));
  if (interval.months != 0) {
    time.month += count * interval.months;
    // A day that the month doesn't have becomes its last one.
    const double length = dayOf({time.year, time.month + 1, 1}) - dayOf({time.year, time.month, 1});
    time.day = std::min(time.day, static_cast<int>(length));
  } else {
    const std::int64_t seconds = secondOfDay(time) + count * interval.seconds;
    time = {time.year, time.month, time.day + static_cast<int>(seconds / kSecondsADay),
            0,         0,          static_cast<int>(seconds % kSecondsADay)};
  }
  setDate(call, daysFromCivil(time));
}

/// Counts the interval boundaries between two dates; for `w`, the full weeks.
void dateDiff(const FunctionCall& call) {
  const Interval& interval = intervalOf(call.text(0));
  const auto position = [&interval](double days) -> std::int64_t {
    const CivilTime time = civilFromDays(days);
    if (interval.months != 0) {
      return (std::int64_t{time.year} * 12 + time.month - 1) / interval.months;
    }
    const auto day = static_cast<std::int64_t>(dayOf(time));
    if (interval.seconds < kSecondsADay) {
      return (day * kSecondsADay + secondOfDay(time)) / interval.seconds;
    }
    // Weeks begin on Sunday, and day 1 was a Sunday.
    const std::int64_t length = interval.seconds / kSecondsADay;
    return static_cast<std::int64_t>(
        std::floor(static_cast<double>(day - 1) / static_cast<double>(length)));
  };
  const std::int64_t difference = position(call.date(2)) - position(call.date(1));
  call.setInteger(interval.name == u"w" ? difference / 7 : difference);
}

void datePart(const FunctionCall& call) {
  const double days = call.date(1);
  const CivilTime time = civilFromDays(days);
  const double newYear = dayOf({time.year, 1, 1});
  const int dayOfYear = static_cast<int>(dayOf(time) - newYear);
  // In the order of `kIntervals`.
  const int parts[] = {
      time.year,   (time.month + 2) / 3, time.month,    (dayOfYear + weekday(newYear) - 1) / 7 + 1,
      time.day,    dayOfYear + 1,        weekday(days), time.hour,
      time.minute, time.second};
  call.setInteger(parts[&intervalOf(call.text(0)) - kIntervals]);
}

/// A part of DateSerial or TimeSerial, which takes 16-bit numbers.
int serialPart(const FunctionCall& call, int argument) {
  const std::int32_t value = call.integer(argument);
  if (value < -32768 || value > 32767) throw error::overflow();
  return value;
}

void dateSerial(const FunctionCall& call) {
  int year = serialPart(call, 0);
  if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
  setDate(call, daysFromCivil({year, serialPart(call, 1), serialPart(call, 2), 0, 0, 0}));
}

void timeSerial(const FunctionCall& call) {
  setDate(call, daysFromCivil(
                    {1899, 12, 30, serialPart(call, 0), serialPart(call, 1), serialPart(call, 2)}));
}

using W = Function::Writing;

constexpr Function kFunctions[] = {
    {u"DATE", 0, 0, "v", Type::Date, "", nullptr, kPass, kFixed, W::Moment},
    {u"TIME", 0, 0, "v", Type::Date, "", nullptr, kPass, kFixed, W::Moment},
    {u"NOW", 0, 0, "v", Type::Date, "", nullptr, kPass, kFixed, W::Moment},
    {u"YEAR", 1, 1, "v", Type::Integer, "jet_year", part<&CivilTime::year>},
    {u"MONTH", 1, 1, "v", Type::Integer, "jet_month", part<&CivilTime::month>},
    {u"DAY", 1, 1, "v", Type::Integer, "jet_day", part<&CivilTime::day>},
    {u"HOUR", 1, 1, "v", Type::Integer, "jet_hour", part<&CivilTime::hour>},
    {u"MINUTE", 1, 1, "v", Type::Integer, "jet_minute", part<&CivilTime::minute>},
    {u"SECOND", 1, 1, "v", Type::Integer, "jet_second", part<&CivilTime::second>},
    {u"WEEKDAY", 1, 1, "v", Type::Integer, "jet_weekday", weekdayOf},
    {u"DATEADD", 3, 3, "tnv", Type::Date, "jet_dateadd", dateAdd},
    {u"DATEDIFF", 3, 3, "tv", Type::Long, "jet_datediff", dateDiff},
    {u"DATEPART", 2, 2, "tv", Type::Integer, "jet_datepart", datePart},
    {u"DATESERIAL", 3, 3, "n", Type::Date, "jet_dateserial", dateSerial},
    {u"TIMESERIAL", 3, 3, "n", Type::Date, "jet_timeserial", timeSerial},
};

}  // namespace

std::span<const Function> dateFunctions() {
  return kFunctions;
}

}  // namespace jetsql
