#include "platform/jetsql/functions/DateFormat.h"

#include <array>
#include <string>

#include "platform/jetsql/functions/NamedPattern.h"
#include "platform/jetsql/functions/NumberFormat.h"
#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"

namespace jetsql {
namespace {

constexpr std::array<NamedPattern, 6> kNamed{{{u"Long Date", u"dddd, mmmm dd, yyyy"},
                                              {u"Medium Date", u"dd-mmm-yy"},
                                              {u"Short Date", u"m/d/yyyy"},
                                              {u"Long Time", u"h:nn:ss AM/PM"},
                                              {u"Medium Time", u"hh:nn AM/PM"},
                                              {u"Short Time", u"hh:nn"}}};
constexpr std::u16string_view kGeneralDate = u"General Date";

constexpr std::array<std::u16string_view, 7> kDays{u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                                   u"Thursday", u"Friday", u"Saturday"};
constexpr std::array<std::u16string_view, 12> kMonths{
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};

bool isDateLetter(char16_t c) {
  return std::u16string_view(u"dmyhnswq").find(c) != std::u16string_view::npos;
}

class DateWriter {
 public:
  DateWriter(double days, std::u16string_view pattern)
      : days_(days), pattern_(pattern), time_(civilFromDays(days)) {
    twelve_ = findAmPm(0) != std::u16string_view::npos;
  }

  std::u16string write() {
    while (position_ < pattern_.size()) writeOne();
    return std::move(text_);
  }

 private:
  std::size_t findAmPm(std::size_t from) const {
    for (std::size_t i = from; i + 5 <= pattern_.size(); ++i) {
      if (sameWord(pattern_.substr(i, 5), u"AM/PM")) return i;
    }
    return std::u16string_view::npos;
  }

  void writeOne() {
    const char16_t c = pattern_[position_];
    if (findAmPm(position_) == position_) {
      text_ += time_.hour < 12 ? u"AM" : u"PM";
      position_ += 5;
    } else if (c == u'\\' && position_ + 1 < pattern_.size()) {
      text_ += pattern_[position_ + 1];
      position_ += 2;
    } else if (c == u'"') {
      const std::size_t close = std::min(pattern_.find(u'"', position_ + 1), pattern_.size());
      text_ += pattern_.substr(position_ + 1, close - position_ - 1);
      position_ = close + 1;
    } else if (isDateLetter(runtime::lowerCase(c))) {
      std::size_t count = 0;
      while (position_ < pattern_.size() &&
             runtime::lowerCase(pattern_[position_]) == runtime::lowerCase(c)) {
        ++position_;
        ++count;
      }
      writePart(runtime::lowerCase(c), count);
    } else {
      text_ += c;
      ++position_;
    }
  }

  void writePart(char16_t letter, std::size_t count) {
    const bool afterHour = afterHour_;
    afterHour_ = letter == u'h';
    switch (letter) {
      case u'd': {
        const std::u16string_view day = kDays[static_cast<std::size_t>(weekday(days_) - 1)];
        if (count > 2) {
          text_ += count == 3 ? day.substr(0, 3) : day;
        } else {
          text_ += runtime::toText(time_.day, count);
        }
        break;
      }
      case u'm': {
        const std::u16string_view month = kMonths[static_cast<std::size_t>(time_.month - 1)];
        if (afterHour) {
          text_ += runtime::toText(time_.minute, count);
        } else if (count > 2) {
          text_ += count == 3 ? month.substr(0, 3) : month;
        } else {
          text_ += runtime::toText(time_.month, count);
        }
        break;
      }
      case u'y':
        text_ += count > 2 ? runtime::toText(time_.year, 4) : runtime::toText(time_.year % 100, 2);
        break;
      case u'h': {
        const int hour = twelve_ ? (time_.hour + 11) % 12 + 1 : time_.hour;
        text_ += runtime::toText(hour, count);
        break;
      }
      case u'n':
        text_ += runtime::toText(time_.minute, count);
        break;
      case u's':
        text_ += runtime::toText(time_.second, count);
        break;
      case u'w':
        text_ += runtime::toText(weekday(days_), 1);
        break;
      default:
        text_ += runtime::toText((time_.month + 2) / 3, 1);
        break;
    }
  }

  double days_;
  std::u16string_view pattern_;
  CivilTime time_;
  bool twelve_ = false;
  bool afterHour_ = false;
  std::size_t position_ = 0;
  std::u16string text_;
};

}  // namespace

bool isDatePattern(std::u16string_view pattern) {
  if (isNumberName(pattern)) return false;
  if (sameWord(pattern, kGeneralDate)) return true;
  pattern = patternNamed(pattern, kNamed);
  bool quoted = false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == u'"') quoted = !quoted;
    if (pattern[i] == u'\\') {
      ++i;
    } else if (!quoted && isDateLetter(runtime::lowerCase(pattern[i]))) {
      return true;
    }
  }
  return false;
}

std::u16string formatDate(double days, std::u16string_view pattern) {
  if (sameWord(pattern, kGeneralDate)) return dateText(days);
  return DateWriter(days, patternNamed(pattern, kNamed)).write();
}

}  // namespace jetsql
