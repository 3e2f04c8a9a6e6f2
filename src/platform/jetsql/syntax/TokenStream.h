#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/RunTimeError.h"

namespace jetsql {

/// Longest statement, in 16-bit units.
inline constexpr std::size_t kLongestStatement = 65536;
/// Deepest nesting of expressions, parentheses, joins and queries.
inline constexpr int kDeepestNesting = 100;

/// The tokens of a statement, read one after the other. The `fail` members raise syntax errors that
/// quote its text. A clause is identified by the position of its first token.
class TokenStream {
 public:
  /// Raises the error for a statement that is too long. The text must outlive the stream.
  explicit TokenStream(std::u16string_view text);

  const Token& here() const { return tokens_[position_]; }
  /// The token `count` positions after this one; End past the last one.
  const Token& ahead(std::size_t count) const;
  std::size_t position() const { return position_; }
  bool atEnd() const { return here().kind == Token::Kind::End; }
  void advance(std::size_t count = 1);
  /// Skips this symbol or keyword if it is next; else returns false.
  bool accept(std::u16string_view word);

  /// True at a word that may be a name.
  bool isName() const;
  /// Skips a name and returns it. Raises the syntax error at anything else.
  std::u16string name(std::size_t clause);
  /// Skips a closing parenthesis. Raises the syntax error at anything else.
  void expectClosing(std::size_t clause);

  /// Levels of nesting that are being read.
  int& depth() { return depth_; }

  /// "Syntax error (missing operator) in query expression '<the clause's expression>'."
  [[noreturn]] void failExpression(std::size_t clause) const;
  /// Raises `failure`; but where the statement has a broken token, the error of that token.
  [[noreturn]] void fail(std::size_t clause, const runtime::RunTimeError& failure) const;

 private:
  void failIfBroken(std::size_t clause) const;
  std::u16string_view clauseText(std::size_t clause) const;

  std::u16string_view text_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  int depth_ = 0;
};

}  // namespace jetsql
