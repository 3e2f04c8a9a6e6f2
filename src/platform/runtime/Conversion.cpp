#include "platform/runtime/Conversion.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "platform/runtime/Rounding.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace runtime {
namespace {

[[noreturn]] void overflow() {
  throw RunTimeError(ErrorNumber::Overflow);
}
[[noreturn]] void raiseTypeMismatch() {
  throw RunTimeError(ErrorNumber::TypeMismatch);
}

/// A text with a read position.
class Cursor {
 public:
  explicit Cursor(std::u16string_view text) : text_(text) {}

  bool atEnd() const { return at_ == text_.size(); }
  /// The character that comes next; U+0000 at the end.
  char16_t next() const { return atEnd() ? u'\0' : text_[at_]; }
  void advance() { ++at_; }
  std::size_t mark() const { return at_; }
  void backTo(std::size_t mark) { at_ = mark; }

  bool take(char16_t character) {
    if (atEnd() || next() != character) return false;
    advance();
    return true;
  }
  bool takeAnyOf(std::u16string_view characters) {
    if (atEnd() || characters.find(next()) == characters.npos) return false;
    advance();
    return true;
  }

 private:
  std::u16string_view text_;
  std::size_t at_ = 0;
};

/// Reads the prefix "&H" (16) or "&O" (8).
std::optional<int> takeBase(Cursor& cursor) {
  if (!cursor.take(u'&')) return std::nullopt;
  if (cursor.takeAnyOf(u"Hh")) return 16;
  if (cursor.takeAnyOf(u"Oo")) return 8;
  return std::nullopt;
}

/// A decimal number as written: the digits without leading zeros, and the position of the decimal
/// point counted from the first of them.
struct DecimalNumber {
  std::string digits;
  long point = 0;
  bool hasDigit = false;

  void addInteger(char16_t digit) {
    hasDigit = true;
    if (digits.empty() && digit == u'0') return;
    digits.push_back(static_cast<char>(digit));
    ++point;
  }
  void addFraction(char16_t digit) {
    hasDigit = true;
    if (digits.empty() && digit == u'0') {
      --point;
      return;
    }
    digits.push_back(static_cast<char>(digit));
  }

  double value() const {
    if (digits.empty() || point < -400) return 0;
    if (point > 400) overflow();
    const std::string text = "0." + digits + "e" + std::to_string(point);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc::result_out_of_range) return number;
    if (point > 0) overflow();
    return 0;
  }
};

/// Reads digits with one decimal point. With `commas`, commas among the digits of the integer part
/// are skipped as separators of thousands.
DecimalNumber takeDecimal(Cursor& cursor, bool commas) {
  DecimalNumber number;
  while (isDigit(cursor.next()) || (commas && number.hasDigit && cursor.next() == u',')) {
    if (isDigit(cursor.next())) number.addInteger(cursor.next());
    cursor.advance();
  }
  if (!cursor.take(u'.')) return number;
  for (; isDigit(cursor.next()); cursor.advance()) number.addFraction(cursor.next());
  return number;
}

/// Reads an exponent, if there is a complete one; an "E" without digits after it is not read.
void takeExponent(Cursor& cursor, DecimalNumber& number) {
  const std::size_t start = cursor.mark();
  if (!cursor.takeAnyOf(u"Ee")) return;
  const bool negative = cursor.take(u'-');
  if (!negative) cursor.take(u'+');
  if (!isDigit(cursor.next())) {
    cursor.backTo(start);
    return;
  }
  constexpr long kMaxExponent = 1'000'000'000;
  long exponent = 0;
  for (; isDigit(cursor.next()); cursor.advance())
    if (exponent < kMaxExponent) exponent = exponent * 10 + (cursor.next() - u'0');
  number.point += negative ? -exponent : exponent;
}

/// Parses what may surround a number: blanks, at most one currency sign, and at most one sign
/// (before or after the number) or pair of parentheses (negative).
class Surroundings {
 public:
  void takeFront(Cursor& cursor) {
    for (;; cursor.advance()) {
      const char16_t character = cursor.next();
      if (isBlank(character)) continue;
      if (character == u'$') {
        once(currency_);
      } else if (character == u'(') {
        once(bracket_);
        once(sign_);
        negative_ = true;
      } else if (!takeSign(character)) {
        return;
      }
    }
  }

  void takeBack(Cursor& cursor) {
    for (; !cursor.atEnd(); cursor.advance()) {
      const char16_t character = cursor.next();
      if (isBlank(character)) continue;
      if (character == u'$') {
        once(currency_);
      } else if (character == u')') {
        if (!bracket_) raiseTypeMismatch();
        once(closed_);
      } else if (!takeSign(character)) {
        raiseTypeMismatch();
      }
    }
    if (bracket_ != closed_) raiseTypeMismatch();
  }

  bool negative() const { return negative_; }

 private:
  static bool isBlank(char16_t character) {
    return character == u' ' || (character >= u'\t' && character <= u'\r') || character == 0x00A0 ||
           character == 0x3000;
  }

  static void once(bool& seen) {
    if (seen) raiseTypeMismatch();
    seen = true;
  }

  bool takeSign(char16_t character) {
    if (character != u'-' && character != u'+') return false;
    once(sign_);
    negative_ = character == u'-';
    return true;
  }

  bool currency_ = false;
  bool bracket_ = false;
  bool closed_ = false;
  bool sign_ = false;
  bool negative_ = false;
};

/// Reads digits of base 8 or 16 as the bit pattern of an integer of `bits` bits.
double takePattern(Cursor& cursor, int base, int bits) {
  const std::uint64_t patterns = std::uint64_t{1} << static_cast<unsigned>(bits);
  std::optional<int> digit = digitValue(cursor.next(), base);
  if (!digit) raiseTypeMismatch();
  std::uint64_t pattern = 0;
  for (; digit; digit = digitValue(cursor.next(), base)) {
    pattern = pattern * static_cast<unsigned>(base) + static_cast<unsigned>(*digit);
    if (pattern >= patterns) overflow();
    cursor.advance();
  }
  const auto value = static_cast<double>(pattern);
  return pattern < patterns / 2 ? value : value - static_cast<double>(patterns);
}

/// The value of a numeric text. Only digits of base 8 or 16 depend on `bits`: they are the bit
/// pattern of a signed integer of that width.
double numberOf(std::u16string_view text, int bits) {
  Cursor cursor(text);
  Surroundings surroundings;
  surroundings.takeFront(cursor);
  double value = 0;
  if (cursor.next() == u'&') {
    const std::optional<int> base = takeBase(cursor);
    if (!base) raiseTypeMismatch();
    value = takePattern(cursor, *base, bits);
    surroundings.takeBack(cursor);
  } else {
    DecimalNumber number = takeDecimal(cursor, true);
    if (!number.hasDigit) raiseTypeMismatch();
    takeExponent(cursor, number);
    surroundings.takeBack(cursor);
    value = number.value();
  }
  return surroundings.negative() ? -value : value;
}

template <class Integer>
Integer rounded(double number) {
  return runtime::rounded<Integer>(number, [] { return RunTimeError(ErrorNumber::Overflow); });
}

std::u16string withoutBlanks(std::u16string_view text) {
  std::u16string rest;
  for (const char16_t character : text)
    if (character != u' ' && character != u'\t' && character != u'\n') rest.push_back(character);
  return rest;
}

}  // namespace

std::int16_t toInteger(std::u16string_view text) {
  return rounded<std::int16_t>(numberOf(text, 16));
}
std::int32_t toLong(std::u16string_view text) {
  return rounded<std::int32_t>(numberOf(text, 32));
}
double toDouble(std::u16string_view text) {
  return numberOf(text, 32);
}
std::int16_t toInteger(double number) {
  return rounded<std::int16_t>(number);
}
std::int16_t toInteger(std::int32_t number) {
  return rounded<std::int16_t>(number);
}
std::int32_t toLong(double number) {
  return rounded<std::int32_t>(number);
}

double leadingNumber(std::u16string_view text) {
  const std::u16string rest = withoutBlanks(text);
  Cursor cursor(rest);
  if (cursor.next() == u'&') {
    const std::optional<int> base = takeBase(cursor);
    double value = 0;
    if (!base) return value;
    for (; const auto digit = digitValue(cursor.next(), *base); cursor.advance())
      value = value * *base + *digit;
    if (std::isinf(value)) overflow();
    return value;
  }
  const bool negative = cursor.take(u'-');
  if (!negative) cursor.take(u'+');
  DecimalNumber number = takeDecimal(cursor, false);
  if (number.hasDigit) takeExponent(cursor, number);
  return negative ? -number.value() : number.value();
}

std::u16string toText(std::int64_t number, std::size_t width) {
  std::u16string digits = widened(std::to_string(number));
  if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
  return digits;
}

}  // namespace runtime
