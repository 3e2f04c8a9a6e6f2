#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/Query.h"
#include "platform/jetsql/ResultRow.h"

namespace jetsql {

/// A table as a statement uses it: the SQLite table `t<number>`, whose columns c0, c1, … are these.
struct TableUse {
  int number = 0;
  const jet::Table* table = nullptr;
  std::vector<Demand> columns;
};

/// A text of the statement, or the key of one.
struct Parameter {
  std::u16string text;
  std::string key;
  bool isKey = false;
};

/// A statement of the dialect as SQLite takes it.
struct Translation {
  std::string sql;
  std::vector<Parameter> parameters;  ///< ?1, ?2, …
  std::vector<TableUse> tables;
  std::set<std::string, std::less<>> functions;  ///< of ours, by their names within SQLite
  std::vector<ResultColumn> columns;             ///< the first columns of SQLite's result
  int sourceRows = 0;                            ///< columns behind them: packed row ids, or null
};

/// Longest statement that is made for SQLite, in bytes.
inline constexpr std::size_t kLongestTranslation = 900'000;

/// Writes a bound query for SQLite. Raises the engine's errors for types that don't go together.
Translation translate(Query& query, jet::TextOrder order);

}  // namespace jetsql
