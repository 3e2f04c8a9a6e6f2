#pragma once

#include <set>
#include <string>
#include <vector>

#include "platform/jetsql/writing/ResultColumn.h"

namespace jet {
class Table;
}

namespace jetsql {

struct BoundQuery;

/// Name of the collating sequence by which texts compare within SQLite: the file's own order.
inline constexpr const char* kCollation = "jet";

/// Length of the key with which a scaled decimal begins within SQLite: a text of digits, whose
/// order is that of the numbers. The decimal itself follows.
inline constexpr std::size_t kDecimalKey = 68;

/// A table as a statement uses it: SQLite's table `t<number>`. Its columns are those that the
/// statement uses, as c0, c1, … by their index in the table, then r: the row's packed id.
struct TableUse {
  int number = 0;
  const jet::Table* table = nullptr;
  std::vector<jet::ColumnIndex> columns = {};
};

/// The source of the values of a result's column, or of a term of its order.
struct ValueSource {
  Type type = Type::Null;
  const jet::Table* table = nullptr;  ///< absent where they are calculated
  jet::ColumnIndex tableColumn = {};  ///< of the table
  int sourceRow = 0;                  ///< index among the statement's source rows
  int sqlColumn = 0;                  ///< column of SQLite's result with a calculated value
};

struct OrderSource {
  ValueSource value;
  bool descending = false;
};

/// A statement of the dialect as SQL for SQLite. The *source rows* of a result row are the table
/// rows that its values are read from. SQLite's result has their packed ids first (null where an
/// outer join found none), then calculated values. Its rows are in no particular order.
struct WrittenStatement {
  std::string sql;
  std::vector<std::u16string> parameters;  ///< ?1, ?2, …
  std::vector<TableUse> tables;
  std::vector<int> sourceRows;                   ///< the number of the table of each source row
  std::set<std::string, std::less<>> functions;  ///< to register, by their names within SQLite
  std::vector<ResultColumn> columns;
  std::vector<ValueSource> values;  ///< of the columns
  std::vector<OrderSource> order;
};

/// Writes a bound query for SQLite. Raises the engine's errors for incompatible types.
WrittenStatement writeStatement(const BoundQuery& query);

}  // namespace jetsql
