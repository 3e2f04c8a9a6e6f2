#pragma once

#include "platform/jetsql/syntax/ParsedQuery.h"
#include "platform/jetsql/syntax/TokenStream.h"

namespace jetsql {

/// Reads one query by the dialect's grammar.
class QueryParser {
 public:
  explicit QueryParser(TokenStream& tokens) : tokens_(tokens), clause_(tokens.position()) {}

  /// Reads the query and stops at the first word that can't belong to it. Raises the engine's
  /// syntax error.
  ParsedQuery read();
  /// Reads the query as a full statement: nothing may follow it but a semicolon.
  ParsedQuery statement(bool hasParameters);
  /// Reads an entry of a SELECT list.
  ParsedItem item();

 private:
  ParsedQuery query();
  ParsedQuery term();
  ParsedSelect select();
  void selectOptions(ParsedSelect& select);
  void selectItems(ParsedSelect& select);
  void fromClause(ParsedSelect& select);
  ParsedFrom fromItem();
  ParsedFrom fromPrimary();
  void fromAlias(ParsedFrom& item);
  std::optional<JoinKind> joinWords();
  void groupByClause(ParsedSelect& select);
  void orderByClause(ParsedQuery& query);
  ParsedExpression expression();

  TokenStream& tokens_;
  std::size_t clause_;  ///< position of the clause that is being read
  int tallest_ = 0;     ///< height of the expressions read so far
};

/// Parses a full statement: a SELECT or UNION, perhaps after PARAMETERS. Raises the engine's error
/// for any other text.
ParsedQuery parseStatement(std::u16string_view text);
/// A text that is one entry of a SELECT list and nothing else.
ParsedItem parseItem(std::u16string_view text);

}  // namespace jetsql
