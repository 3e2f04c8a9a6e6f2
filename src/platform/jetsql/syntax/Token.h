#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jetsql {

/// True when two words are equal, ignoring the case of the letters A to Z.
bool sameWord(std::u16string_view a, std::u16string_view b);

/// One token of a statement.
struct Token {
  enum class Kind : std::uint8_t {
    End,
    Name,        ///< a bare word: keyword, function or name
    QuotedName,  ///< in brackets or backquotes: a name and nothing else
    Text,        ///< in single or double quotes
    Integer,     ///< a number without decimals or exponent
    Decimal,
    Date,
    Symbol,
    BrokenText,  ///< a quote that is never closed; runs to the end
    BrokenDate,  ///< a `#` that is never closed, or around a text that is no date
    BrokenName,  ///< a bracket that is never closed; runs to the end
  };

  Kind kind = Kind::End;
  /// The content: a name without its brackets, a text without its quotes, a symbol.
  std::u16string text;
  /// A number, or a date as days since 1899-12-30.
  double number = 0;
  /// The token's bounds in the statement.
  std::size_t begin = 0;
  std::size_t end = 0;

  bool isBroken() const { return kind >= Kind::BrokenText; }
  /// True for this symbol, or this keyword in any case.
  bool is(std::u16string_view word) const {
    // Most words differ in length, and a statement asks for many.
    return text.size() == word.size() && (kind == Kind::Name || kind == Kind::Symbol) &&
           sameWord(text, word);
  }
  bool isAnyOf(std::span<const std::u16string_view> words) const;
};

/// Splits a statement into tokens; the last one is End. Nothing after a broken token is read: End
/// follows it.
std::vector<Token> tokenize(std::u16string_view statement);

}  // namespace jetsql
