#include "platform/jetsql/syntax/QueryParser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/jetsql/syntax/DepthGuard.h"
#include "platform/jetsql/syntax/ExpressionParser.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// True at a SELECT, perhaps after opening parentheses.
bool beginsQuery(const TokenStream& tokens) {
  std::size_t count = 0;
  while (tokens.ahead(count).is(u"(")) ++count;
  return tokens.ahead(count).is(u"SELECT");
}

/// Names and types of parameters are ignored: no parameter can be given a value.
bool skipParameters(TokenStream& tokens) {
  if (!tokens.here().is(u"PARAMETERS")) return false;
  while (!tokens.atEnd() && !tokens.here().is(u";") && !tokens.here().isBroken()) tokens.advance();
  if (!tokens.accept(u";")) tokens.fail(0, error::clauseSyntax(u"PARAMETER clause"));
  return true;
}

}  // namespace

ParsedQuery parseStatement(std::u16string_view text) {
  TokenStream tokens(text);
  const bool hasParameters = skipParameters(tokens);
  for (const std::u16string_view other : {u"INSERT", u"UPDATE", u"DELETE", u"TRANSFORM", u"CREATE",
                                          u"ALTER", u"DROP", u"EXECUTE", u"PROCEDURE"}) {
    if (tokens.here().is(other)) throw error::notCapable();
  }
  if (!beginsQuery(tokens)) {
    throw error::unknownStatement();
  }
  return QueryParser(tokens).statement(hasParameters);
}

ParsedItem parseItem(std::u16string_view text) {
  TokenStream tokens(text);
  ParsedItem read = QueryParser(tokens).item();
  if (!tokens.atEnd()) tokens.failExpression(0);
  return read;
}

ParsedQuery QueryParser::statement(bool hasParameters) {
  ParsedQuery parsed = read();
  parsed.hasParameters = hasParameters;
  if (tokens_.accept(u";") && !tokens_.atEnd()) {
    throw error::textAfterEnd();
  }
  if (!tokens_.atEnd()) tokens_.failExpression(clause_);
  return parsed;
}

ParsedQuery QueryParser::read() {
  ParsedQuery parsed = query();
  parsed.height = tallest_;
  return parsed;
}

ParsedQuery QueryParser::query() {
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  ParsedQuery parsed = term();
  for (int count = 2; tokens_.accept(u"UNION"); ++count) {
    if (count > kDeepestNesting) throw error::tooComplex();
    ParsedQuery both;
    both.all = tokens_.accept(u"ALL");
    both.left = std::make_shared<const ParsedQuery>(std::move(parsed));
    both.right = std::make_shared<const ParsedQuery>(term());
    parsed = std::move(both);
  }
  orderByClause(parsed);
  if (tokens_.here().is(u"WITH") && tokens_.ahead(1).is(u"OWNERACCESS")) {
    tokens_.advance(2);
    if (!tokens_.accept(u"OPTION")) {
      tokens_.fail(clause_, error::clauseSyntax(u"WITH OWNERACCESS OPTION declaration"));
    }
  }
  return parsed;
}

/// Reads one side of a UNION: a SELECT, or a query in parentheses.
ParsedQuery QueryParser::term() {
  ParsedQuery parsed;
  if (!tokens_.here().is(u"(")) {
    parsed.select = select();
    return parsed;
  }
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  tokens_.advance();
  ParsedQuery inner = query();
  tokens_.expectClosing(clause_);
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
  if (!tokens_.accept(u"SELECT")) tokens_.fail(clause_, error::clauseSyntax(u"union query"));
  ParsedSelect select;
  selectOptions(select);
  selectItems(select);
  if (tokens_.here().is(u"INTO")) throw error::notCapable();
  fromClause(select);
  if (tokens_.accept(u"WHERE")) select.where = expression();
  groupByClause(select);
  if (tokens_.accept(u"HAVING")) select.having = expression();
  return select;
}

void QueryParser::selectOptions(ParsedSelect& select) {
  for (;;) {
    // A column may have such a name as well.
    const Token& next = tokens_.ahead(1);
    if (next.is(u",") || next.is(u".") || next.is(u"FROM")) return;
    if (tokens_.accept(u"ALL")) continue;
    if (tokens_.accept(u"DISTINCT")) {
      select.distinct = true;
    } else if (tokens_.accept(u"DISTINCTROW")) {
      select.distinctRow = true;
    } else if (tokens_.here().is(u"TOP") && next.kind == Token::Kind::Integer) {
      select.top = Top{.count = next.number, .percent = false};
      tokens_.advance(2);
      select.top->percent = tokens_.accept(u"PERCENT");
    } else {
      return;
    }
  }
}

void QueryParser::selectItems(ParsedSelect& select) {
  do {
    clause_ = tokens_.position();
    if (tokens_.here().is(u"FROM") || tokens_.atEnd() || tokens_.here().is(u",")) {
      tokens_.fail(clause_, error::reservedWord());
    }
    select.items.push_back(item());
  } while (tokens_.accept(u","));
}

ParsedItem QueryParser::item() {
  ParsedItem item;
  if (tokens_.accept(u"*")) return item;
  const Token& next = tokens_.ahead(1);
  if ((next.is(u".") || next.is(u"!")) && tokens_.ahead(2).is(u"*") && tokens_.isName()) {
    item.qualifier = tokens_.here().text;
    tokens_.advance(3);
    return item;
  }
  item.expression = expression();
  if (tokens_.accept(u"AS")) item.alias = tokens_.name(clause_);
  return item;
}

void QueryParser::fromClause(ParsedSelect& select) {
  if (!tokens_.accept(u"FROM")) {
    const Token& here = tokens_.here();
    if (tokens_.atEnd() || here.is(u";") || here.is(u")") || here.is(u"UNION") ||
        here.is(u"WHERE") || here.is(u"ORDER")) {
      return;
    }
    tokens_.failExpression(clause_);
  }
  clause_ = tokens_.position();
  do {
    select.from.push_back(fromItem());
  } while (tokens_.accept(u","));
  if (tokens_.here().is(u"IN")) throw error::notCapable();
}

ParsedFrom QueryParser::fromItem() {
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  ParsedFrom left = fromPrimary();
  const auto kind = joinWords();
  if (!kind) return left;
  ParsedFrom join;
  join.join = *kind;
  join.sides.push_back(std::move(left));
  join.sides.push_back(fromPrimary());
  if (!tokens_.accept(u"ON")) tokens_.fail(clause_, error::clauseSyntax(u"JOIN operation"));
  join.condition = expression();
  // A further join needs parentheses around this one.
  if (joinWords()) tokens_.failExpression(clause_);
  return join;
}

std::optional<JoinKind> QueryParser::joinWords() {
  constexpr std::array<std::pair<std::u16string_view, JoinKind>, 3> kKinds{
      {{u"INNER", JoinKind::Inner}, {u"LEFT", JoinKind::Left}, {u"RIGHT", JoinKind::Right}}};
  for (const auto& [word, kind] : kKinds) {
    if (!tokens_.accept(word)) continue;
    if (kind != JoinKind::Inner) tokens_.accept(u"OUTER");
    if (!tokens_.accept(u"JOIN")) tokens_.fail(clause_, error::clauseSyntax(u"JOIN operation"));
    return kind;
  }
  return std::nullopt;
}

ParsedFrom QueryParser::fromPrimary() {
  const DepthGuard nesting(tokens_.depth(), kDeepestNesting);
  ParsedFrom item;
  if (!tokens_.accept(u"(")) {
    if (!tokens_.isName()) tokens_.fail(clause_, error::clauseSyntax(u"FROM clause"));
    item.name = tokens_.name(clause_);
    while (tokens_.accept(u".")) item.name += u"." + tokens_.name(clause_);
    fromAlias(item);
    return item;
  }
  if (!tokens_.here().is(u"SELECT")) {
    item = fromItem();
    if (!tokens_.accept(u")")) tokens_.fail(clause_, error::clauseSyntax(u"JOIN operation"));
    if (!item.isJoin() && item.alias.empty()) fromAlias(item);
    return item;
  }
  item.query = std::make_shared<const ParsedQuery>(QueryParser(tokens_).read());
  tallest_ = std::max(tallest_, item.query->height);
  if (!tokens_.accept(u")")) tokens_.fail(clause_, error::clauseSyntax(u"FROM clause"));
  fromAlias(item);
  return item;
}

void QueryParser::fromAlias(ParsedFrom& item) {
  if (tokens_.accept(u"AS") || (tokens_.isName() && !tokens_.here().is(u"WITH"))) {
    item.alias = tokens_.name(clause_);
  }
}

void QueryParser::groupByClause(ParsedSelect& select) {
  if (!tokens_.accept(u"GROUP")) return;
  if (!tokens_.accept(u"BY")) tokens_.fail(clause_, error::clauseSyntax(u"GROUP BY clause"));
  do {
    select.groupBy.push_back(expression());
  } while (tokens_.accept(u","));
}

void QueryParser::orderByClause(ParsedQuery& query) {
  if (!tokens_.accept(u"ORDER")) return;
  if (!tokens_.accept(u"BY")) tokens_.fail(clause_, error::clauseSyntax(u"ORDER BY clause"));
  do {
    ParsedOrder term;
    term.expression = expression();
    term.descending = tokens_.accept(u"DESC");
    if (!term.descending) tokens_.accept(u"ASC");
    query.orderBy.push_back(std::move(term));
  } while (tokens_.accept(u","));
}

/// Reads the expression that begins or continues a clause.
ParsedExpression QueryParser::expression() {
  clause_ = tokens_.position();
  ParsedExpression read = ExpressionParser(tokens_).read();
  tallest_ = std::max(tallest_, read.height);
  return read;
}

}  // namespace jetsql
