#include "platform/jetsql/syntax/TokenStream.h"

#include <algorithm>
#include <array>

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// Words that are no names unless they are in brackets.
constexpr std::array<std::u16string_view, 33> kReserved{
    u"ALIKE",  u"ALL",      u"AND",         u"AS",    u"ASC",    u"BETWEEN", u"BY",
    u"DESC",   u"DISTINCT", u"DISTINCTROW", u"EQV",   u"EXISTS", u"FROM",    u"GROUP",
    u"HAVING", u"IMP",      u"IN",          u"INNER", u"IS",     u"JOIN",    u"LEFT",
    u"LIKE",   u"MOD",      u"NOT",         u"NULL",  u"ON",     u"OR",      u"ORDER",
    u"RIGHT",  u"SELECT",   u"UNION",       u"WHERE", u"XOR"};

/// Words that end the expression of a clause.
constexpr std::array<std::u16string_view, 12> kClauseWords{u"FROM",  u"WHERE", u"GROUP", u"HAVING",
                                                           u"ORDER", u"UNION", u"INNER", u"ON",
                                                           u"AS",    u"INTO",  u"WITH",  u"PIVOT"};

}  // namespace

TokenStream::TokenStream(std::u16string_view text) : text_(text) {
  if (text.size() > kLongestStatement) throw error::tooComplex();
  tokens_ = tokenize(text);
}

const Token& TokenStream::ahead(std::size_t count) const {
  return tokens_[std::min(position_ + count, tokens_.size() - 1)];
}

void TokenStream::advance(std::size_t count) {
  position_ = std::min(position_ + count, tokens_.size() - 1);
}

bool TokenStream::accept(std::u16string_view word) {
  if (!here().is(word)) return false;
  advance();
  return true;
}

bool TokenStream::isName() const {
  if (here().kind == Token::Kind::QuotedName) return true;
  return here().kind == Token::Kind::Name && !here().isAnyOf(kReserved);
}

std::u16string TokenStream::name(std::size_t clause) {
  if (!isName()) fail(clause, error::reservedWord());
  std::u16string text = here().text;
  advance();
  return text;
}

void TokenStream::expectClosing(std::size_t clause) {
  if (accept(u")")) return;
  if (!atEnd()) failExpression(clause);
  fail(clause, error::missingClosing(clauseText(clause)));
}

void TokenStream::failExpression(std::size_t clause) const {
  fail(clause, error::missingOperator(clauseText(clause)));
}

void TokenStream::fail(std::size_t clause, const runtime::RunTimeError& failure) const {
  failIfBroken(clause);
  throw failure;
}

/// A token that is never closed may be the cause of any fault before it, so it is reported first.
void TokenStream::failIfBroken(std::size_t clause) const {
  if (tokens_.size() < 2) return;
  const Token& last = tokens_[tokens_.size() - 2];
  const std::u16string_view rest = text_.substr(tokens_[clause].begin);
  if (last.kind == Token::Kind::BrokenText) throw error::unclosedText(rest);
  if (last.kind == Token::Kind::BrokenDate) throw error::unclosedDate(rest);
  if (last.kind == Token::Kind::BrokenName) throw error::unclosedName(last.text);
}

/// The clause's expression as the statement has it.
std::u16string_view TokenStream::clauseText(std::size_t clause) const {
  std::size_t end = clause;
  int depth = 0;
  for (; tokens_[end].kind != Token::Kind::End; ++end) {
    const Token& token = tokens_[end];
    if (token.is(u"(")) ++depth;
    if (token.is(u")") && depth > 0) --depth;
    if (depth == 0 && end > clause && (token.is(u";") || token.isAnyOf(kClauseWords))) break;
  }
  const std::size_t begin = tokens_[clause].begin;
  const std::size_t last = end == clause ? begin : tokens_[end - 1].end;
  return text_.substr(begin, last - begin);
}

}  // namespace jetsql
