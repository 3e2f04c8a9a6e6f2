#include <algorithm>
#include <array>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"
#include "platform/jetsql/ParserNesting.h"

namespace jetsql {
namespace {

/// Words that are never a name unless they stand in brackets.
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

bool isOneOf(const Token& token, std::span<const std::u16string_view> words) {
  return std::ranges::any_of(words, [&](std::u16string_view word) { return token.isWord(word); });
}

}  // namespace

Parser::Parser(std::u16string_view text) : text_(text) {
  if (text.size() > kLongestStatement) throw error::tooComplex();
  tokens_ = tokenize(text);
}

std::unique_ptr<Query> Parser::statement() {
  const bool declares = here().isWord(u"PARAMETERS");
  if (declares) parameters();
  for (const std::u16string_view other : {u"INSERT", u"UPDATE", u"DELETE", u"TRANSFORM", u"CREATE",
                                          u"ALTER", u"DROP", u"EXECUTE", u"PROCEDURE"}) {
    if (here().isWord(other)) throw error::notCapable();
  }
  if (!beginsQuery()) {
    throw error::statement(
        u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
        u"'UPDATE'.");
  }
  std::unique_ptr<Query> whole = query();
  whole->hasParameters = declares;
  endOfStatement();
  return whole;
}

void Parser::parameters() {
  // What a parameter is called and of which type it is plays no part: none can be given a value.
  while (here().kind != Token::Kind::End && !here().is(u";") && !here().isBroken()) advance();
  if (!accept(u";")) failClause(u"PARAMETER clause");
}

std::unique_ptr<Query> Parser::query() {
  const Nesting nesting(*this);
  std::unique_ptr<Query> whole = queryTerm();
  int count = 1;
  while (acceptWord(u"UNION")) {
    if (++count > kDeepestNesting) throw error::tooComplex();
    auto both = std::make_unique<Query>();
    both->all = acceptWord(u"ALL");
    both->left = std::move(whole);
    both->right = queryTerm();
    whole = std::move(both);
  }
  orderByClause(*whole);
  if (acceptWords(u"WITH", u"OWNERACCESS") && !acceptWord(u"OPTION")) {
    failClause(u"WITH OWNERACCESS OPTION declaration");
  }
  return whole;
}

std::unique_ptr<Query> Parser::queryTerm() {
  if (here().is(u"(")) {
    const Nesting nesting(*this);
    advance();
    std::unique_ptr<Query> inner = query();
    expectClosing();
    // An order of its own keeps it apart from the order of the whole.
    if (inner->orderBy.empty()) return inner;
    auto outer = std::make_unique<Query>();
    outer->select = std::make_unique<Select>();
    outer->select->items.emplace_back();
    auto item = std::make_unique<FromItem>();
    item->query = std::move(inner);
    outer->select->from.push_back(std::move(item));
    return outer;
  }
  auto whole = std::make_unique<Query>();
  whole->select = select();
  return whole;
}

std::unique_ptr<Select> Parser::select() {
  if (!acceptWord(u"SELECT")) failClause(u"union query");
  auto whole = std::make_unique<Select>();
  selectOptions(*whole);
  selectItems(*whole);
  if (here().isWord(u"INTO")) throw error::notCapable();
  fromClause(*whole);
  if (acceptWord(u"WHERE")) whole->where = clauseExpression();
  groupByClause(*whole);
  if (acceptWord(u"HAVING")) whole->having = clauseExpression();
  return whole;
}

void Parser::selectOptions(Select& select) {
  for (;;) {
    // A column may bear such a name as well.
    if (ahead(1).is(u",") || ahead(1).is(u".") || ahead(1).isWord(u"FROM")) return;
    if (acceptWord(u"ALL")) continue;
    if (acceptWord(u"DISTINCT")) {
      select.distinct = true;
    } else if (acceptWord(u"DISTINCTROW")) {
      select.distinctRow = true;
    } else if (here().isWord(u"TOP") && ahead(1).kind == Token::Kind::Whole) {
      advance();
      select.top = Top{.count = here().number, .percent = false};
      advance();
      select.top->percent = acceptWord(u"PERCENT");
    } else {
      return;
    }
  }
}

void Parser::selectItems(Select& select) {
  do {
    clauseBegin_ = place_;
    if (here().isWord(u"FROM") || here().kind == Token::Kind::End || here().is(u",")) {
      failIfBroken();
      throw error::statement(
          u"The SELECT statement includes a reserved word or an argument name that is misspelled "
          u"or missing, or the punctuation is incorrect.");
    }
    select.items.push_back(selectItem());
  } while (accept(u","));
}

SelectItem Parser::selectItem() {
  SelectItem item;
  if (accept(u"*")) return item;
  if (isName() && (ahead(1).is(u".") || ahead(1).is(u"!")) && ahead(2).is(u"*")) {
    item.qualifier = here().text;
    place_ += 3;
    return item;
  }
  item.expression = clauseExpression();
  if (acceptWord(u"AS")) item.alias = name();
  return item;
}

SelectItem Parser::loneItem() {
  SelectItem item = selectItem();
  if (here().kind != Token::Kind::End) failExpression();
  return item;
}

void Parser::fromClause(Select& select) {
  if (!acceptWord(u"FROM")) {
    if (here().kind == Token::Kind::End || here().is(u";") || here().is(u")") ||
        here().isWord(u"UNION") || here().isWord(u"WHERE") || here().isWord(u"ORDER")) {
      return;
    }
    failExpression();
  }
  clauseBegin_ = place_;
  do {
    select.from.push_back(fromItem());
  } while (accept(u","));
  if (here().isWord(u"IN")) throw error::notCapable();
}

std::unique_ptr<FromItem> Parser::fromItem() {
  const Nesting nesting(*this);
  std::unique_ptr<FromItem> left = fromPrimary();
  if (const auto kind = joinWords()) {
    auto whole = std::make_unique<FromItem>();
    whole->join = *kind;
    whole->left = std::move(left);
    whole->right = fromPrimary();
    if (!acceptWord(u"ON")) failClause(u"JOIN operation");
    whole->condition = clauseExpression();
    // A further join has to stand around this one in parentheses.
    if (joinWords()) failExpression();
    return whole;
  }
  return left;
}

std::optional<JoinKind> Parser::joinWords() {
  JoinKind kind = JoinKind::Inner;
  if (here().isWord(u"LEFT")) {
    kind = JoinKind::Left;
  } else if (here().isWord(u"RIGHT")) {
    kind = JoinKind::Right;
  } else if (!here().isWord(u"INNER")) {
    return std::nullopt;
  }
  advance();
  if (kind != JoinKind::Inner) acceptWord(u"OUTER");
  if (!acceptWord(u"JOIN")) failClause(u"JOIN operation");
  return kind;
}

std::unique_ptr<FromItem> Parser::fromPrimary() {
  const Nesting nesting(*this);
  auto whole = std::make_unique<FromItem>();
  if (accept(u"(")) {
    if (!here().isWord(u"SELECT")) {
      whole = fromItem();
      if (!accept(u")")) failClause(u"JOIN operation");
      if (!whole->isJoin() && whole->alias.empty()) fromAlias(*whole);
      return whole;
    }
    const std::size_t clause = clauseBegin_;
    whole->query = query();
    clauseBegin_ = clause;
    if (!accept(u")")) failClause(u"FROM clause");
    fromAlias(*whole);
    return whole;
  }
  if (!isName()) failClause(u"FROM clause");
  whole->name = name();
  while (accept(u".")) whole->name += u"." + name();
  fromAlias(*whole);
  return whole;
}

void Parser::fromAlias(FromItem& item) {
  if (acceptWord(u"AS") || (isName() && !here().isWord(u"WITH"))) item.alias = name();
}

void Parser::groupByClause(Select& select) {
  if (!acceptWord(u"GROUP")) return;
  if (!acceptWord(u"BY")) failClause(u"GROUP BY clause");
  do {
    select.groupBy.push_back(clauseExpression());
  } while (accept(u","));
}

void Parser::orderByClause(Query& query) {
  if (!acceptWord(u"ORDER")) return;
  if (!acceptWord(u"BY")) failClause(u"ORDER BY clause");
  do {
    OrderTerm term;
    term.expression = clauseExpression();
    term.descending = acceptWord(u"DESC");
    if (!term.descending) acceptWord(u"ASC");
    query.orderBy.push_back(std::move(term));
  } while (accept(u","));
}

void Parser::endOfStatement() {
  if (accept(u";")) {
    if (here().kind == Token::Kind::End) return;
    throw error::statement(u"Characters found after end of SQL statement.");
  }
  if (here().kind != Token::Kind::End) failExpression();
}

const Token& Parser::ahead(std::size_t count) const {
  return tokens_[std::min(place_ + count, tokens_.size() - 1)];
}

void Parser::advance() {
  if (here().kind != Token::Kind::End) ++place_;
}

bool Parser::accept(std::u16string_view symbol) {
  if (!here().is(symbol)) return false;
  advance();
  return true;
}

bool Parser::acceptWord(std::u16string_view keyword) {
  if (!here().isWord(keyword)) return false;
  advance();
  return true;
}

bool Parser::acceptWords(std::u16string_view first, std::u16string_view second) {
  if (!here().isWord(first) || !ahead(1).isWord(second)) return false;
  place_ += 2;
  return true;
}

void Parser::expectClosing() {
  if (accept(u")")) return;
  failIfBroken();
  if (here().kind != Token::Kind::End) failExpression();
  throw error::statement(u"Missing ), ], or Item in query expression '" +
                         std::u16string(clauseText()) + u"'.");
}

bool Parser::isName() const {
  if (here().kind == Token::Kind::QuotedName) return true;
  return here().kind == Token::Kind::Name && !isOneOf(here(), kReserved);
}

/// True at a SELECT, perhaps behind opening parentheses.
bool Parser::beginsQuery() const {
  std::size_t count = 0;
  while (ahead(count).is(u"(")) ++count;
  return ahead(count).isWord(u"SELECT");
}

std::u16string Parser::name() {
  if (!isName()) {
    failIfBroken();
    throw error::statement(
        u"The SELECT statement includes a reserved word or an argument name that is misspelled or "
        u"missing, or the punctuation is incorrect.");
  }
  std::u16string text = here().text;
  advance();
  return text;
}

void Parser::failExpression(std::u16string_view what) {
  failIfBroken();
  throw error::expressionSyntax(what, clauseText());
}

void Parser::failClause(std::u16string_view clause) {
  failIfBroken();
  throw error::clauseSyntax(clause);
}

/// A word that is never closed makes nonsense of all before it, so it is reported first.
void Parser::failIfBroken() {
  if (tokens_.size() < 2) return;
  const Token& last = tokens_[tokens_.size() - 2];
  const std::u16string_view rest = text_.substr(tokens_[clauseBegin_].begin);
  if (last.kind == Token::Kind::BrokenText) throw error::expressionSyntax(u" in string", rest);
  if (last.kind == Token::Kind::BrokenDate) throw error::expressionSyntax(u" in date", rest);
  if (last.kind == Token::Kind::BrokenName) {
    throw error::statement(u"Invalid bracketing of name '" + last.text + u"'.");
  }
}

/// The expression of the clause that is being read, as it stands in the statement.
std::u16string_view Parser::clauseText() const {
  std::size_t end = clauseBegin_;
  int depth = 0;
  for (; tokens_[end].kind != Token::Kind::End; ++end) {
    const Token& token = tokens_[end];
    if (token.is(u"(")) ++depth;
    if (token.is(u")") && depth > 0) --depth;
    if (depth == 0 && end > clauseBegin_ && (token.is(u";") || isOneOf(token, kClauseWords))) break;
  }
  const std::size_t begin = tokens_[clauseBegin_].begin;
  const std::size_t last = end == clauseBegin_ ? begin : tokens_[end - 1].end;
  return text_.substr(begin, last - begin);
}

}  // namespace jetsql
