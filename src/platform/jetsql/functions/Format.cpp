#include "platform/jetsql/functions/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

using View = std::u16string_view;

constexpr std::array<std::pair<View, View>, 15> kNamed{
    {{u"General Number", u""},
     {u"Fixed", u"0.00"},
     {u"Standard", u"#,##0.00"},
     {u"Percent", u"0.00%"},
     {u"Currency", u"$#,##0.00;($#,##0.00)"},
     {u"Scientific", u"0.00E+00"},
     {u"Yes/No", u"\"Yes\";\"Yes\";\"No\""},
     {u"True/False", u"\"True\";\"True\";\"False\""},
     {u"On/Off", u"\"On\";\"On\";\"Off\""},
     {u"Long Date", u"dddd, mmmm dd, yyyy"},
     {u"Medium Date", u"dd-mmm-yy"},
     {u"Short Date", u"m/d/yyyy"},
     {u"Long Time", u"h:nn:ss AM/PM"},
     {u"Medium Time", u"hh:nn AM/PM"},
     {u"Short Time", u"hh:nn"}}};

constexpr View kDateLetters = u"dmyhnswq";
constexpr View kHalfOfDay = u"am/pm";
constexpr std::array<View, 7> kDays{u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                    u"Thursday", u"Friday", u"Saturday"};
constexpr std::array<View, 12> kMonths{u"January",   u"February", u"March",    u"April",
                                       u"May",       u"June",     u"July",     u"August",
                                       u"September", u"October",  u"November", u"December"};

constexpr std::size_t kMostDecimals = 30;

/// A day or month: its number, or its name from three letters on.
template <std::size_t Count>
std::u16string numberOrName(int number, std::size_t letters, const std::array<View, Count>& names) {
  if (letters < 3) return runtime::toText(number, letters);
  return std::u16string(
      names[static_cast<std::size_t>(number - 1)].substr(0, letters > 3 ? View::npos : 3));
}

/// Digits of a number that isn't negative, before and after its point.
struct Digits {
  std::string integer;
  std::string decimals;
};

/// Rounds the decimal form of the number, halves away from zero.
Digits rounded(double number, std::size_t decimals) {
  std::array<char, 400> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  // The leading zero takes the carry.
  std::string all = "0" + std::string(text.data(), end.ptr);
  const std::size_t point = std::min(all.find('.'), all.size());
  const std::size_t size = point + 1 + decimals;
  const bool up = all.size() > size && all[size] >= '5';
  all.resize(size, '0');
  all.erase(point, 1);
  if (up) {
    std::size_t last = all.size() - 1;
    while (all[last] == '9') all[last--] = '0';
    ++all[last];
  }
  const std::size_t first = std::min(all.find_first_not_of('0'), point);
  return {all.substr(first, point - first), all.substr(point)};
}

}  // namespace

/// A section of a number's pattern.
struct Format::Section {
  /// Reads the pattern's symbols from `begin` to `end`.
  Section(const Format& format, std::size_t begin, std::size_t end);

  bool isEmpty() const { return pieces.empty(); }
  std::u16string written(double number) const;
  std::u16string replaced(Digits number, int power) const;

  enum class Kind : std::uint8_t { Text, Digit, Point, Exponent };
  struct Piece {
    Kind kind;
    std::u16string_view text = {};
  };
  std::vector<Piece> pieces;
  std::size_t integerDigits = 0;   ///< digits of the pattern before the point
  std::size_t fewestIntegers = 0;  ///< digits before the point
  std::size_t mostDecimals = 0;    ///< digits after the point
  std::size_t fewestDecimals = 0;  ///< digits after the point
  std::optional<std::size_t> fewestExponentDigits;
  bool thousands = false;
  int scale = 0;  ///< power of ten by which the number is multiplied
};

Format::Section::Section(const Format& format, std::size_t begin, std::size_t end) {
  const View symbols = View(format.symbols_).substr(0, end);
  bool afterPoint = false;
  int commas = 0;
  // A comma right before the point, or at the end, divides by a thousand.
  const auto divide = [&] { scale -= 3 * std::exchange(commas, 0); };
  for (std::size_t i = begin; i < end; ++i) {
    const char16_t symbol = symbols[i];
    if (symbol == u'0' || symbol == u'#') {
      pieces.push_back({Kind::Digit});
      if (afterPoint) {
        mostDecimals = std::min(mostDecimals + 1, kMostDecimals);
        if (symbol == u'0') fewestDecimals = mostDecimals;
      } else {
        ++integerDigits;
        if (std::exchange(commas, 0) > 0) thousands = true;
        if (symbol == u'0' || fewestIntegers > 0) ++fewestIntegers;
      }
    } else if (symbol == u',' && integerDigits > 0 && !afterPoint) {
      ++commas;
    } else if (symbol == u'.' && !afterPoint) {
      divide();
      afterPoint = true;
      pieces.push_back({Kind::Point});
    } else if (symbol == u'e' && integerDigits + mostDecimals > 0 &&
               View(u"+-").find(symbols.substr(i + 1, 1)) != View::npos && i + 1 < end) {
      pieces.push_back({Kind::Exponent, symbols[++i] == u'+' ? u"E+" : u"E"});
      const std::size_t last = std::min(symbols.find_first_not_of(u"0#", i + 1), end);
      fewestExponentDigits =
          fewestExponentDigits.value_or(0) +
          static_cast<std::size_t>(std::ranges::count(symbols.substr(i + 1, last - i - 1), u'0'));
      i = last - 1;
    } else {
      if (symbol == u'%') scale += 2;
      pieces.push_back({Kind::Text, format.texts_[i]});
    }
  }
  divide();
}

std::u16string Format::Section::written(double number) const {
  double magnitude = std::fabs(number);
  int power = 0;
  if (fewestExponentDigits && magnitude > 0) {
    power = static_cast<int>(std::floor(std::log10(magnitude))) -
            std::max(static_cast<int>(fewestIntegers), 1) + 1;
    magnitude /= std::pow(10.0, power);
  } else if (scale != 0) {
    magnitude *= std::pow(10.0, scale);
  }
  return replaced(rounded(magnitude, mostDecimals), power);
}

/// Replaces the pattern's digits with the number's; surplus digits go before the first one.
std::u16string Format::Section::replaced(Digits number, int power) const {
  std::string& integer = number.integer;
  std::string& fraction = number.decimals;
  const std::size_t lastDigit = fraction.find_last_not_of('0') + 1;
  fraction.resize(std::min(fraction.size(), std::max(fewestDecimals, lastDigit)));
  if (integer.size() < fewestIntegers) integer.insert(0, fewestIntegers - integer.size(), '0');

  std::u16string text;
  std::size_t passed = 0;   // digits of the pattern
  std::size_t written = 0;  // of the integer
  // The last digits are left for the pattern's digits that follow.
  const auto writeIntegers = [&](std::size_t following) {
    for (; written + following < integer.size(); ++written) {
      if (thousands && written > 0 && (integer.size() - written) % 3 == 0) text += u',';
      text += static_cast<char16_t>(integer[written]);
    }
  };
  for (const Piece& piece : pieces) {
    if (piece.kind == Kind::Text) {
      text += piece.text;
    } else if (piece.kind == Kind::Point) {
      if (integerDigits == 0) writeIntegers(0);
      text += u'.';
    } else if (piece.kind == Kind::Exponent) {
      text += power < 0 ? u"E-" : piece.text;
      text += runtime::toText(std::abs(power), *fewestExponentDigits);
    } else if (++passed <= integerDigits) {
      writeIntegers(integerDigits - passed);
    } else if (passed - integerDigits <= fraction.size()) {
      text += static_cast<char16_t>(fraction[passed - integerDigits - 1]);
    }
  }
  return text;
}

Format::Format(std::u16string_view pattern) : isGeneralDate_(sameWord(pattern, u"General Date")) {
  for (const auto& [name, named] : kNamed) {
    if (sameWord(name, pattern)) pattern = named;
  }
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char16_t c = pattern[i];
    const bool isQuoted = c == u'"';
    const bool isEscaped = c == u'\\' && i + 1 < pattern.size();
    symbols_ += isQuoted || isEscaped ? u'\0' : runtime::lowerCase(c);
    if (isQuoted) {
      const std::size_t close = std::min(pattern.find(u'"', i + 1), pattern.size());
      texts_.emplace_back(pattern.substr(i + 1, close - i - 1));
      i = close;
    } else {
      if (isEscaped) ++i;
      texts_.emplace_back(1, pattern[i]);
    }
  }
}

bool Format::isDate() const {
  return isGeneralDate_ || symbols_.find_first_of(kDateLetters) != View::npos;
}

std::u16string Format::date(double days) const {
  if (isGeneralDate_) return dateText(days);
  const CivilTime time = civilFromDays(days);
  const View symbols = symbols_;
  const bool isTwelve = symbols.find(kHalfOfDay) != View::npos;
  bool afterHour = false;
  const auto part = [&](char16_t letter, std::size_t count) {
    if (letter == u'd' && count > 2) return numberOrName(weekday(days), count, kDays);
    if (letter == u'd') return runtime::toText(time.day, count);
    if (letter == u'n' || (letter == u'm' && afterHour)) return runtime::toText(time.minute, count);
    if (letter == u'm') return numberOrName(time.month, count, kMonths);
    if (letter == u'y' && count > 2) return runtime::toText(time.year, 4);
    if (letter == u'y') return runtime::toText(time.year % 100, 2);
    if (letter == u'h' && isTwelve) return runtime::toText((time.hour + 11) % 12 + 1, count);
    if (letter == u'h') return runtime::toText(time.hour, count);
    if (letter == u's') return runtime::toText(time.second, count);
    return runtime::toText(letter == u'w' ? weekday(days) : (time.month + 2) / 3);
  };
  std::u16string text;
  for (std::size_t i = 0, count = 0; i < symbols.size(); i += count) {
    count = 1;
    if (symbols.substr(i).starts_with(kHalfOfDay)) {
      count = kHalfOfDay.size();
      text += time.hour < 12 ? u"AM" : u"PM";
    } else if (kDateLetters.find(symbols[i]) != View::npos) {
      count = std::min(symbols.find_first_not_of(symbols[i], i), symbols.size()) - i;
      text += part(symbols[i], count);
      afterHour = symbols[i] == u'h';
    } else {
      text += texts_[i];
    }
  }
  return text;
}

std::vector<Format::Section> Format::sections() const {
  std::vector<Section> all;
  for (std::size_t begin = 0; begin <= symbols_.size();) {
    const std::size_t end = std::min(symbols_.find(u';', begin), symbols_.size());
    all.emplace_back(*this, begin, end);
    begin = end + 1;
  }
  return all;
}

std::u16string Format::number(double number) const {
  if (symbols_.empty()) return runtime::Variant(number).toText();
  const std::vector<Section> all = sections();
  const auto has = [&](std::size_t index) { return index < all.size() && !all[index].isEmpty(); };
  if (number > 0) return all[0].written(number);
  if (number == 0) return all[has(2) ? 2 : 0].written(0);
  return has(1) ? all[1].written(number) : u"-" + all[0].written(number);
}

std::u16string Format::null() const {
  const std::vector<Section> all = sections();
  return all.size() < 4 ? std::u16string() : all[3].written(0);
}

}  // namespace jetsql
