#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace jetsql {

/// A date and time by its fields. Months and days count from 1.
struct CivilTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// Days since 1899-12-30; the fraction is the time of day, which counts forward also before that
/// day. Months, days and parts of the time outside their ranges carry over.
double daysFromCivil(const CivilTime& time);
/// The fields of a date, to the nearest second. Raises the overflow error outside the years 100 to
/// 9999.
CivilTime civilFromDays(double days);
/// 1 (Sunday) to 7.
int weekday(double days);

/// The date or time that a text denotes: month/day/year or year-month-day, with or without a time
/// in 12 or 24 hours, or a time alone. Absent for any other text.
std::optional<double> parseDate(std::u16string_view text);

/// A date as text: month/day/year where it has a day, the time in 12 hours where it has a time.
std::u16string dateText(double days);

}  // namespace jetsql
