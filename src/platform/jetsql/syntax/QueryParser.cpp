#include "platform/jetsql/syntax/QueryParser.h"

#include <algorithm>
#include <utility>

#include "platform/jetsql/syntax/DepthGuard.h"
#include "platform/jetsql/syntax/ExpressionParser.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// True at a SELECT, perhaps after opening parentheses.
bool beginsQuery(const TokenStream& words) {
  std::size_t count = 0;
  while (words.ahead(count).is(u"(")) ++count;
  return words.ahead(count).isWord(u"SELECT");
}

/// Names and types of parameters are ignored: no parameter can be given a value.
bool skipParameters(TokenStream& words) {
  if (!words.here().isWord(u"PARAMETERS")) return false;
  while (!words.atEnd() && !words.here().is(u";") && !words.here().isBroken()) words.advance();
  if (!words.accept(u";")) words.failClause(0, u"PARAMETER clause");
  return true;
}

}  // namespace

ParsedQuery parseStatement(std::u16string_view text) {
  TokenStream words(text);
  const bool hasParameters = skipParameters(words);
  for (const std::u16string_view other : {u"INSERT", u"UPDATE", u"DELETE", u"TRANSFORM", u"CREATE",
                                          u"ALTER", u"DROP", u"EXECUTE", u"PROCEDURE"}) {
    if (words.here().isWord(other)) throw error::notCapable();
  }
  if (!beginsQuery(words)) {
    throw error::unknownStatement();
  }
  return QueryParser(words).statement(hasParameters);
}

ParsedItem parseItem(std::u16string_view text) {
  TokenStream words(text);
  ParsedItem read = QueryParser(words).item();
  if (!words.atEnd()) words.failExpression(0);
  return read;
}

ParsedQuery QueryParser::statement(bool hasParameters) {
  ParsedQuery parsed = read();
  parsed.hasParameters = hasParameters;
  if (words_.accept(u";") && !words_.atEnd()) {
    throw error::textAfterEnd();
  }
  if (!words_.atEnd()) words_.failExpression(clause_);
  return parsed;
}

ParsedQuery QueryParser::read() {
  ParsedQuery parsed = query();
  parsed.height = tallest_;
  return parsed;
}

ParsedQuery QueryParser::query() {
  const DepthGuard nesting(words_.depth(), kDeepestNesting);
  ParsedQuery parsed = term();
  for (int count = 2; words_.acceptWord(u"UNION"); ++count) {
    if (count > kDeepestNesting) throw error::tooComplex();
    ParsedQuery both;
    both.all = words_.acceptWord(u"ALL");
    both.left = std::make_shared<const ParsedQuery>(std::move(parsed));
    both.right = std::make_shared<const ParsedQuery>(term());
    parsed = std::move(both);
  }
  orderByClause(parsed);
  if (words_.here().isWord(u"WITH") && words_.ahead(1).isWord(u"OWNERACCESS")) {
    words_.advance(2);
    if (!words_.acceptWord(u"OPTION")) {
      words_.failClause(clause_, u"WITH OWNERACCESS OPTION declaration");
    }
  }
  return parsed;
}

ParsedQuery QueryParser::term() {
  ParsedQuery parsed;
  if (!words_.here().is(u"(")) {
    parsed.select = select();
    return parsed;
  }
  const DepthGuard nesting(words_.depth(), kDeepestNesting);
  words_.advance();
  ParsedQuery inner = query();
  words_.expectClosing(clause_);
  // A query with an ORDER BY stays a query of its own, so that the union's ORDER BY doesn't replace
  // it.
  if (inner.orderBy.empty()) return inner;
  ParsedFrom item;
  item.query = std::make_shared<const ParsedQuery>(std::move(inner));
  parsed.select.emplace();
  parsed.select->items.emplace_back();
  parsed.select->from.push_back(std::move(item));
  return parsed;
}

ParsedSelect QueryParser::select() {
  if (!words_.acceptWord(u"SELECT")) words_.failClause(clause_, u"union query");
  ParsedSelect select;
  selectOptions(select);
  selectItems(select);
  if (words_.here().isWord(u"INTO")) throw error::notCapable();
  fromClause(select);
  if (words_.acceptWord(u"WHERE")) select.where = expression();
  groupByClause(select);
  if (words_.acceptWord(u"HAVING")) select.having = expression();
  return select;
}

void QueryParser::selectOptions(ParsedSelect& select) {
  for (;;) {
    // A column may have such a name as well.
    const Token& next = words_.ahead(1);
    if (next.is(u",") || next.is(u".") || next.isWord(u"FROM")) return;
    if (words_.acceptWord(u"ALL")) continue;
    if (words_.acceptWord(u"DISTINCT")) {
      select.distinct = true;
    } else if (words_.acceptWord(u"DISTINCTROW")) {
      select.distinctRow = true;
    } else if (words_.here().isWord(u"TOP") && next.kind == Token::Kind::Integer) {
      select.top = Top{.count = next.number, .percent = false};
      words_.advance(2);
      select.top->percent = words_.acceptWord(u"PERCENT");
    } else {
      return;
    }
  }
}

void QueryParser::selectItems(ParsedSelect& select) {
  do {
    clause_ = words_.position();
    if (words_.here().isWord(u"FROM") || words_.atEnd() || words_.here().is(u",")) {
      words_.failReserved(clause_);
    }
    select.items.push_back(item());
  } while (words_.accept(u","));
}

ParsedItem QueryParser::item() {
  ParsedItem item;
  if (words_.accept(u"*")) return item;
  const Token& next = words_.ahead(1);
  if ((next.is(u".") || next.is(u"!")) && words_.ahead(2).is(u"*") && words_.isName()) {
    item.qualifier = words_.here().text;
    words_.advance(3);
    return item;
  }
  item.expression = expression();
  if (words_.acceptWord(u"AS")) item.alias = words_.name(clause_);
  return item;
}

void QueryParser::fromClause(ParsedSelect& select) {
  if (!words_.acceptWord(u"FROM")) {
    const Token& here = words_.here();
    if (words_.atEnd() || here.is(u";") || here.is(u")") || here.isWord(u"UNION") ||
        here.isWord(u"WHERE") || here.isWord(u"ORDER")) {
      return;
    }
    words_.failExpression(clause_);
  }
  clause_ = words_.position();
  do {
    select.from.push_back(fromItem());
  } while (words_.accept(u","));
  if (words_.here().isWord(u"IN")) throw error::notCapable();
}

ParsedFrom QueryParser::fromItem() {
  const DepthGuard nesting(words_.depth(), kDeepestNesting);
  ParsedFrom left = fromPrimary();
  const auto kind = joinWords();
  if (!kind) return left;
  ParsedFrom join;
  join.join = *kind;
  join.sides.push_back(std::move(left));
  join.sides.push_back(fromPrimary());
  if (!words_.acceptWord(u"ON")) words_.failClause(clause_, u"JOIN operation");
  join.condition = expression();
  // A further join needs parentheses around this one.
  if (joinWords()) words_.failExpression(clause_);
  return join;
}

std::optional<JoinKind> QueryParser::joinWords() {
  JoinKind kind = JoinKind::Inner;
  if (words_.here().isWord(u"LEFT")) {
    kind = JoinKind::Left;
  } else if (words_.here().isWord(u"RIGHT")) {
    kind = JoinKind::Right;
  } else if (!words_.here().isWord(u"INNER")) {
    return std::nullopt;
  }
  words_.advance();
  if (kind != JoinKind::Inner) words_.acceptWord(u"OUTER");
  if (!words_.acceptWord(u"JOIN")) words_.failClause(clause_, u"JOIN operation");
  return kind;
}

ParsedFrom QueryParser::fromPrimary() {
  const DepthGuard nesting(words_.depth(), kDeepestNesting);
  ParsedFrom item;
  if (!words_.accept(u"(")) {
    if (!words_.isName()) words_.failClause(clause_, u"FROM clause");
    item.name = words_.name(clause_);
    while (words_.accept(u".")) item.name += u"." + words_.name(clause_);
    fromAlias(item);
    return item;
  }
  if (!words_.here().isWord(u"SELECT")) {
    item = fromItem();
    if (!words_.accept(u")")) words_.failClause(clause_, u"JOIN operation");
    if (!item.isJoin() && item.alias.empty()) fromAlias(item);
    return item;
  }
  item.query = std::make_shared<const ParsedQuery>(QueryParser(words_).read());
  tallest_ = std::max(tallest_, item.query->height);
  if (!words_.accept(u")")) words_.failClause(clause_, u"FROM clause");
  fromAlias(item);
  return item;
}

void QueryParser::fromAlias(ParsedFrom& item) {
  if (words_.acceptWord(u"AS") || (words_.isName() && !words_.here().isWord(u"WITH"))) {
    item.alias = words_.name(clause_);
  }
}

void QueryParser::groupByClause(ParsedSelect& select) {
  if (!words_.acceptWord(u"GROUP")) return;
  if (!words_.acceptWord(u"BY")) words_.failClause(clause_, u"GROUP BY clause");
  do {
    select.groupBy.push_back(expression());
  } while (words_.accept(u","));
}

void QueryParser::orderByClause(ParsedQuery& query) {
  if (!words_.acceptWord(u"ORDER")) return;
  if (!words_.acceptWord(u"BY")) words_.failClause(clause_, u"ORDER BY clause");
  do {
    ParsedOrder term;
    term.expression = expression();
    term.descending = words_.acceptWord(u"DESC");
    if (!term.descending) words_.acceptWord(u"ASC");
    query.orderBy.push_back(std::move(term));
  } while (words_.accept(u","));
}

/// Reads the expression that begins or continues a clause.
ParsedExpression QueryParser::expression() {
  clause_ = words_.position();
  ParsedExpression read = ExpressionParser(words_).read();
  tallest_ = std::max(tallest_, read.height);
  return read;
}

}  // namespace jetsql
