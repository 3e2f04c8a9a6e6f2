#include "platform/jetsql/syntax/Token.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/Text.h"

namespace jetsql {
namespace {

using runtime::isDigit;

constexpr bool beginsName(char16_t c) {
  return runtime::isAsciiLetter(c) || c == u'_' || c >= 0x80;
}

constexpr bool continuesName(char16_t c) {
  return beginsName(c) || isDigit(c) || c == u'$';
}

constexpr char16_t lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

class Lexer {
 public:
  explicit Lexer(std::u16string_view statement) : text_(statement) {}

  std::vector<Token> run() {
    std::vector<Token> tokens;
    for (;;) {
      while (isBlank(at(position_))) ++position_;
      Token& token = tokens.emplace_back();
      token.begin = position_;
      if (position_ < text_.size()) read(token);
      token.end = position_;
      if (token.kind == Token::Kind::End) return tokens;
      if (token.isBroken()) position_ = text_.size();
    }
  }

 private:
  static bool isBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
  char16_t at(std::size_t position) const {
    return position < text_.size() ? text_[position] : u'\0';
  }

  void read(Token& token) {
    const char16_t c = at(position_);
    if (c == u'"' || c == u'\'') return readText(token, c);
    if (c == u'[') return readQuotedName(token, u']');
    if (c == u'`') return readQuotedName(token, u'`');
    if (c == u'#') return readDate(token);
    if (isDigit(c) || (c == u'.' && isDigit(at(position_ + 1)))) return readNumber(token);
    if (c == u'&' && readBasedNumber(token)) return;
    if (beginsName(c)) return readName(token);
    readSymbol(token);
  }

  void readText(Token& token, char16_t quote) {
    token.kind = Token::Kind::BrokenText;
    for (++position_; position_ < text_.size(); ++position_) {
      if (text_[position_] == quote) {
        if (at(position_ + 1) != quote) {
          token.kind = Token::Kind::Text;
          ++position_;
          return;
        }
        ++position_;
      }
      token.text += text_[position_];
    }
  }

  void readQuotedName(Token& token, char16_t closing) {
    const std::size_t close = text_.find(closing, position_ + 1);
    if (close == std::u16string_view::npos) {
      token.kind = Token::Kind::BrokenName;
      token.text = text_.substr(position_);
      position_ = text_.size();
      return;
    }
    token.kind = Token::Kind::QuotedName;
    token.text = text_.substr(position_ + 1, close - position_ - 1);
    position_ = close + 1;
  }

  void readDate(Token& token) {
    const std::size_t close = text_.find(u'#', position_ + 1);
    token.kind = Token::Kind::BrokenDate;
    if (close == std::u16string_view::npos) {
      position_ = text_.size();
      return;
    }
    if (const auto days = parseDate(text_.substr(position_ + 1, close - position_ - 1))) {
      token.kind = Token::Kind::Date;
      token.number = *days;
    }
    position_ = close + 1;
  }

  void readNumber(Token& token) {
    const std::size_t begin = position_;
    token.kind = Token::Kind::Integer;
    while (isDigit(at(position_))) ++position_;
    if (at(position_) == u'.') {
      token.kind = Token::Kind::Decimal;
      ++position_;
      while (isDigit(at(position_))) ++position_;
    }
    if (lower(at(position_)) == u'e') {
      const bool hasSign = at(position_ + 1) == u'+' || at(position_ + 1) == u'-';
      const std::size_t digits = position_ + (hasSign ? 2 : 1);
      if (isDigit(at(digits))) {
        token.kind = Token::Kind::Decimal;
        for (position_ = digits; isDigit(at(position_));) ++position_;
      }
    }
    std::string narrow;
    for (const char16_t c : text_.substr(begin, position_ - begin)) {
      narrow += static_cast<char>(c);
    }
    const auto read = std::from_chars(narrow.data(), narrow.data() + narrow.size(), token.number);
    if (read.ec == std::errc::result_out_of_range) {
      // A number too small to differ from zero also has this result.
      if (narrow.find('-') == std::string::npos) throw error::overflow();
      token.number = 0;
    }
  }

  /// Reads "&H1F" or "&O17"; false when the ampersand is the operator that joins texts.
  bool readBasedNumber(Token& token) {
    const char16_t letter = lower(at(position_ + 1));
    const int base = letter == u'h' ? 16 : 8;
    if (letter != u'h' && letter != u'o') return false;
    std::size_t end = position_ + 2;
    double value = 0;
    while (const auto digit = runtime::digitValue(at(end), base)) {
      value = value * base + *digit;
      ++end;
    }
    if (end == position_ + 2 || continuesName(at(end))) return false;
    // At most as wide as a long, the top bit being the sign.
    if (value > 4294967295.0) throw error::overflow();
    if (base == 16 && end - position_ - 2 <= 4 && value > 32767) value -= 65536;
    if (value > 2147483647.0) value -= 4294967296.0;
    token.kind = Token::Kind::Integer;
    token.number = value;
    position_ = end;
    return true;
  }

  void readName(Token& token) {
    token.kind = Token::Kind::Name;
    while (continuesName(at(position_))) token.text += text_[position_++];
  }

  void readSymbol(Token& token) {
    token.kind = Token::Kind::Symbol;
    const std::u16string_view two = text_.substr(position_, 2);
    const bool isPair = two == u"<>" || two == u"<=" || two == u">=";
    token.text = isPair ? two : text_.substr(position_, 1);
    position_ += token.text.size();
  }

  std::u16string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

bool Token::isAnyOf(std::span<const std::u16string_view> words) const {
  return std::ranges::any_of(words, [this](std::u16string_view word) { return is(word); });
}

std::vector<Token> tokenize(std::u16string_view statement) {
  return Lexer(statement).run();
}

bool sameWord(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

}  // namespace jetsql
