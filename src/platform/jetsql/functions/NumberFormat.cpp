#include "platform/jetsql/functions/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "platform/jetsql/functions/NamedPattern.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

constexpr std::array<NamedPattern, 8> kNamed{{{u"Fixed", u"0.00"},
                                              {u"Standard", u"#,##0.00"},
                                              {u"Percent", u"0.00%"},
                                              {u"Currency", u"$#,##0.00;($#,##0.00)"},
                                              {u"Scientific", u"0.00E+00"},
                                              {u"Yes/No", u"\"Yes\";\"Yes\";\"No\""},
                                              {u"True/False", u"\"True\";\"True\";\"False\""},
                                              {u"On/Off", u"\"On\";\"On\";\"Off\""}}};

constexpr std::u16string_view kGeneralNumber = u"General Number";

constexpr int kMostDecimals = 30;

/// One piece of a section: a digit or a literal.
struct Piece {
  enum class Kind : std::uint8_t { Digit, Point, Exponent, Literal } kind;
  char16_t character = 0;  ///< `0` or `#` of a digit, the sign of an exponent
  std::u16string literal;
};

/// A parsed section of a pattern.
struct Section {
  std::vector<Piece> pieces;
  int integers = 0;  ///< minimum of digits before the point
  int decimals = 0;  ///< maximum of digits after the point
  int fewest = 0;    ///< minimum of digits after the point
  int exponent = 0;  ///< minimum of digits of the exponent
  bool hasExponent = false;
  bool hasDigits = false;
  bool thousands = false;
  int scale = 0;  ///< power of ten by which the number is multiplied
};

std::vector<std::u16string_view> sections(std::u16string_view pattern) {
  std::vector<std::u16string_view> found;
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == u'\\') {
      ++i;
    } else if (pattern[i] == u'"') {
      quoted = !quoted;
    } else if (pattern[i] == u';' && !quoted) {
      found.push_back(pattern.substr(begin, i - begin));
      begin = i + 1;
    }
  }
  found.push_back(pattern.substr(begin));
  return found;
}

class SectionReader {
 public:
  explicit SectionReader(std::u16string_view text) : text_(text) {}

  Section read() {
    for (; position_ < text_.size(); ++position_) readOne(text_[position_]);
    // A comma right before the point, or at the end, divides by a thousand.
    section_.scale -= 3 * pendingCommas_;
    return std::move(section_);
  }

 private:
  void readOne(char16_t c) {
    if (c == u'0' || c == u'#') return readDigit(c);
    if (c == u',' && section_.hasDigits && !afterPoint_) {
      ++pendingCommas_;
      return;
    }
    if (c == u'.' && !afterPoint_) {
      section_.scale -= 3 * pendingCommas_;
      pendingCommas_ = 0;
      afterPoint_ = true;
      section_.pieces.push_back({Piece::Kind::Point, c, {}});
      return;
    }
    if ((c == u'E' || c == u'e') && section_.hasDigits && position_ + 1 < text_.size() &&
        (text_[position_ + 1] == u'+' || text_[position_ + 1] == u'-')) {
      return readExponent();
    }
    if (c == u'%') section_.scale += 2;
    readLiteral(c);
  }

  void readDigit(char16_t c) {
    section_.hasDigits = true;
    section_.pieces.push_back({Piece::Kind::Digit, c, {}});
    if (afterPoint_) {
      section_.decimals = std::min(section_.decimals + 1, kMostDecimals);
      if (c == u'0') section_.fewest = section_.decimals;
      return;
    }
    if (pendingCommas_ > 0) section_.thousands = true;
    pendingCommas_ = 0;
    if (c == u'0' || section_.integers > 0) ++section_.integers;
  }

  void readExponent() {
    section_.hasExponent = true;
    section_.pieces.push_back({Piece::Kind::Exponent, text_[position_ + 1], {}});
    for (position_ += 2;
         position_ < text_.size() && (text_[position_] == u'0' || text_[position_] == u'#');
         ++position_) {
      if (text_[position_] == u'0') ++section_.exponent;
    }
    --position_;
  }

  void readLiteral(char16_t c) {
    std::u16string literal(1, c);
    if (c == u'\\' && position_ + 1 < text_.size()) {
      literal = text_.substr(++position_, 1);
    } else if (c == u'"') {
      const std::size_t close = std::min(text_.find(u'"', position_ + 1), text_.size());
      literal = text_.substr(position_ + 1, close - position_ - 1);
      position_ = close;
    }
    section_.pieces.push_back({Piece::Kind::Literal, 0, std::move(literal)});
  }

  std::u16string_view text_;
  std::size_t position_ = 0;
  Section section_;
  bool afterPoint_ = false;
  int pendingCommas_ = 0;
};

/// Digits of a number that isn't negative, before and after its point.
struct Digits {
  std::string integer;
  std::string decimals;
};

/// Rounds the decimal form of the number, halves away from zero.
Digits rounded(double number, int decimals) {
  std::array<char, 400> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  std::string all(text.data(), end.ptr);
  const std::size_t point = std::min(all.find('.'), all.size());
  Digits digits{all.substr(0, point), point < all.size() ? all.substr(point + 1) : ""};
  const auto kept = static_cast<std::size_t>(decimals);
  const bool up = digits.decimals.size() > kept && digits.decimals[kept] >= '5';
  digits.decimals.resize(kept, '0');
  if (up) {
    std::string joined = "0" + digits.integer + digits.decimals;
    auto last = joined.size() - 1;
    while (joined[last] == '9') joined[last--] = '0';
    ++joined[last];
    digits.integer = joined.substr(0, joined.size() - kept);
    digits.decimals = joined.substr(joined.size() - kept);
  }
  digits.integer.erase(0, std::min(digits.integer.find_first_not_of('0'), digits.integer.size()));
  return digits;
}

/// Replaces the pattern's digits with the number's; surplus digits go before the first one.
std::u16string written(const Section& section, Digits digits, int exponent) {
  while (static_cast<int>(digits.decimals.size()) > section.fewest && !digits.decimals.empty() &&
         digits.decimals.back() == '0') {
    digits.decimals.pop_back();
  }
  if (static_cast<int>(digits.integer.size()) < section.integers) {
    digits.integer.insert(0, static_cast<std::size_t>(section.integers) - digits.integer.size(),
                          '0');
  }
  const auto patternDigits = static_cast<std::size_t>(std::ranges::count_if(
      section.pieces.begin(), std::ranges::find(section.pieces, Piece::Kind::Point, &Piece::kind),
      [](const Piece& piece) { return piece.kind == Piece::Kind::Digit; }));

  std::u16string text;
  std::size_t passed = 0;   // pattern digits passed before the point
  std::size_t decimal = 0;  // decimals written
  std::size_t left = digits.integer.size();
  bool afterPoint = false;
  // The last digits are left for the pattern digits that follow.
  const std::size_t count = digits.integer.size();
  const auto writeIntegers = [&](std::size_t following) {
    for (; left > following; --left) {
      if (section.thousands && left < count && left % 3 == 0) text += u',';
      text += static_cast<char16_t>(digits.integer[count - left]);
    }
  };
  for (const Piece& piece : section.pieces) {
    switch (piece.kind) {
      case Piece::Kind::Literal:
        text += piece.literal;
        break;
      case Piece::Kind::Point:
        if (patternDigits == 0) writeIntegers(0);
        afterPoint = true;
        text += u'.';
        break;
      case Piece::Kind::Exponent: {
        text += exponent < 0 ? u"E-" : (piece.character == u'+' ? u"E+" : u"E");
        text += runtime::toText(std::abs(exponent), static_cast<std::size_t>(section.exponent));
        break;
      }
      case Piece::Kind::Digit:
        if (afterPoint) {
          if (decimal < digits.decimals.size()) {
            text += static_cast<char16_t>(digits.decimals[decimal++]);
          }
          break;
        }
        writeIntegers(patternDigits - ++passed);
        break;
    }
  }
  return text;
}

std::u16string formatSection(double number, std::u16string_view text) {
  const Section section = SectionReader(text).read();
  double magnitude = std::fabs(number);
  int exponent = 0;
  if (section.hasExponent && magnitude > 0) {
    exponent =
        static_cast<int>(std::floor(std::log10(magnitude))) - std::max(section.integers, 1) + 1;
    magnitude /= std::pow(10.0, exponent);
  } else if (section.scale != 0) {
    magnitude *= std::pow(10.0, section.scale);
  }
  return written(section, rounded(magnitude, section.decimals), exponent);
}

}  // namespace

bool isNumberName(std::u16string_view pattern) {
  return sameWord(pattern, kGeneralNumber) || patternNamed(pattern, kNamed) != pattern;
}

std::u16string formatNumber(double number, std::u16string_view pattern) {
  pattern = patternNamed(pattern, kNamed);
  if (pattern.empty() || sameWord(pattern, kGeneralNumber)) {
    return runtime::Variant(number).toText();
  }
  const std::vector<std::u16string_view> all = sections(pattern);
  const auto chosen = [&](std::size_t index) {
    return index < all.size() && !all[index].empty() ? all[index] : all[0];
  };
  if (number > 0) return formatSection(number, all[0]);
  if (number == 0) return formatSection(0, chosen(2));
  if (all.size() > 1 && !all[1].empty()) return formatSection(number, all[1]);
  return u"-" + formatSection(number, all[0]);
}

std::u16string formatNull(std::u16string_view pattern) {
  const std::vector<std::u16string_view> all = sections(pattern);
  return all.size() < 4 ? std::u16string() : formatSection(0, all[3]);
}

}  // namespace jetsql
