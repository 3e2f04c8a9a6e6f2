#include "platform/jetsql/syntax/DateText.h"

#include <chrono>
#include <cmath>
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

/// Days since 1899-12-30 by the Gregorian calendar; the month from 1 to 12.
std::int64_t daysFromDate(std::int64_t year, int month, std::int64_t day) {
  // A day of the month is a 16-bit number, too small to lead from a year beyond these limits back
  // to a valid date.
  constexpr std::int64_t kFarYear = 20000;
  if (year < -kFarYear || year > kFarYear) throw error::overflow();
  const std::chrono::sys_days first{std::chrono::year{static_cast<int>(year)} / month / 1};
  return (first - kEpoch).count() + day - 1;
}

void setDate(std::int64_t days, CivilTime& time) {
  const std::chrono::year_month_day date{kEpoch + std::chrono::days{days}};
  time.day = static_cast<int>(static_cast<unsigned>(date.day()));
  time.month = static_cast<int>(static_cast<unsigned>(date.month()));
  time.year = static_cast<int>(date.year());
}

/// A two-digit year is between 1930 and 2029.
int fullYear(int year, std::size_t digits) {
  if (digits > 2) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

/// A token of a date: digits, letters, or one other character. Spaces separate tokens.
struct Word {
  enum class Kind { Number, Letters, Mark } kind;
  std::u16string text;
  int number = 0;
};

std::optional<std::vector<Word>> words(std::u16string_view text) {
  std::vector<Word> all;
  for (std::size_t i = 0; i < text.size();) {
    const char16_t c = text[i];
    Word word{Word::Kind::Mark, {}, 0};
    if (runtime::isDigit(c)) {
      word.kind = Word::Kind::Number;
      for (; i < text.size() && runtime::isDigit(text[i]); ++i) {
        if (word.text.size() == 4) return std::nullopt;
        word.text += text[i];
        word.number = word.number * 10 + (text[i] - u'0');
      }
    } else if (runtime::isAsciiLetter(c)) {
      word.kind = Word::Kind::Letters;
      for (; i < text.size() && runtime::isAsciiLetter(text[i]); ++i)
        word.text += runtime::lowerCase(text[i]);
    } else {
      word.text = c;
      ++i;
      if (c == u' ' || c == u'\t') continue;
    }
    all.push_back(std::move(word));
    if (all.size() > 12) return std::nullopt;
  }
  return all;
}

class DateParser {
 public:
  explicit DateParser(std::vector<Word> words) : words_(std::move(words)) {}

  std::optional<double> parse() {
    const bool hasDay = !isMark(1, u":") && !isLetters(1);
    if (hasDay && !parseDay()) return std::nullopt;
    if (position_ < words_.size() && !parseTime()) return std::nullopt;
    if (position_ != words_.size() || words_.empty()) return std::nullopt;
    return daysFromCivil(time_);
  }

 private:
  bool isMark(std::size_t position, std::u16string_view mark) const {
    return position < words_.size() && words_[position].kind == Word::Kind::Mark &&
           words_[position].text == mark;
  }
  bool isLetters(std::size_t position) const {
    return position < words_.size() && words_[position].kind == Word::Kind::Letters;
  }
  const Word* number(std::size_t position) const {
    if (position >= words_.size() || words_[position].kind != Word::Kind::Number) return nullptr;
    return &words_[position];
  }

  bool parseDay() {
    const Word* first = number(0);
    const Word* second = number(2);
    const Word* third = number(4);
    const bool slashed =
        (isMark(1, u"/") && isMark(3, u"/")) || (isMark(1, u"-") && isMark(3, u"-"));
    if (first == nullptr || second == nullptr || third == nullptr || !slashed) return false;
    position_ = 5;
    if (first->text.size() > 2) return setDay(first->number, second->number, third->number);
    const int year = fullYear(third->number, third->text.size());
    // The month comes first unless it can't be one.
    return setDay(year, first->number, second->number) ||
           setDay(year, second->number, first->number);
  }

  bool setDay(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    if (day > 31 || !(std::chrono::year{year} / month / day).ok()) return false;
    time_.year = year;
    time_.month = month;
    time_.day = day;
    return true;
  }

  bool parseTime() {
    const Word* hour = number(position_);
    if (hour == nullptr) return false;
    time_.hour = hour->number;
    ++position_;
    const bool hasMinute = part(time_.minute);
    if (hasMinute) part(time_.second);
    if (!isLetters(position_)) return hasMinute && time_.hour < 24;
    const std::u16string& half = words_[position_++].text;
    if ((half != u"am" && half != u"pm") || time_.hour < 1 || time_.hour > 12) return false;
    time_.hour = time_.hour % 12 + (half == u"pm" ? 12 : 0);
    return true;
  }

  bool part(int& value) {
    const Word* digits = number(position_ + 1);
    if (!isMark(position_, u":") || digits == nullptr || digits->number > 59) return false;
    value = digits->number;
    position_ += 2;
    return true;
  }

  std::vector<Word> words_;
  std::size_t position_ = 0;
  CivilTime time_;
};

}  // namespace

double daysFromCivil(const CivilTime& time) {
  const std::int64_t months = std::int64_t{time.year} * 12 + time.month - 1;
  const std::int64_t year = months >= 0 ? months / 12 : (months - 11) / 12;
  std::int64_t days = daysFromDate(year, static_cast<int>(months - year * 12) + 1, time.day);
  std::int64_t seconds =
      std::int64_t{time.hour} * 3600 + std::int64_t{time.minute} * 60 + time.second;
  days += seconds / kSecondsADay;
  seconds %= kSecondsADay;
  if (seconds < 0) {
    seconds += kSecondsADay;
    --days;
  }
  const double fraction = static_cast<double>(seconds) / static_cast<double>(kSecondsADay);
  const double fullDays = static_cast<double>(days);
  return days < 0 ? fullDays - fraction : fullDays + fraction;
}

CivilTime civilFromDays(double days) {
  if (!runtime::Date{days}.isInCalendar()) throw error::overflow();
  auto fullDays = static_cast<std::int64_t>(days);
  const double fraction = std::fabs(days - static_cast<double>(fullDays));
  std::int64_t seconds = std::llround(fraction * static_cast<double>(kSecondsADay));
  if (seconds == kSecondsADay) {
    seconds = 0;
    ++fullDays;
  }
  CivilTime time;
  setDate(fullDays, time);
  time.hour = static_cast<int>(seconds / 3600);
  time.minute = static_cast<int>(seconds / 60 % 60);
  time.second = static_cast<int>(seconds % 60);
  return time;
}

int weekday(double days) {
  const auto fullDays = static_cast<std::int64_t>(days);
  return static_cast<int>(((fullDays + 6) % 7 + 7) % 7) + 1;
}

std::optional<double> parseDate(std::u16string_view text) {
  auto all = words(text);
  if (!all) return std::nullopt;
  return DateParser(std::move(*all)).parse();
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
  text += runtime::toText(time.hour % 12 == 0 ? 12 : time.hour % 12) + u":" +
          runtime::toText(time.minute, 2) + u":" + runtime::toText(time.second, 2);
  return text + (time.hour < 12 ? u" AM" : u" PM");
}

}  // namespace jetsql
