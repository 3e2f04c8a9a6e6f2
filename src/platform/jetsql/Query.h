#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/Expression.h"

namespace jetsql {

/// One entry of a SELECT list.
struct SelectItem {
  ExpressionPtr expression;  ///< absent for `*` and `name.*`
  std::u16string qualifier;  ///< the name before `.*`
  std::u16string alias;
};

struct JoinedSource;

struct OrderTerm {
  ExpressionPtr expression;
  bool descending = false;
  /// The query's own column that it names or numbers, once names are bound; else -1.
  int output = -1;
};

enum class JoinKind : std::uint8_t { Inner, Left, Right };

/// What stands in FROM: a table or saved query by name, a query in parentheses, or a join.
struct FromItem {
  std::u16string name;
  std::u16string alias;
  std::unique_ptr<Query> query;
  JoinKind join = JoinKind::Inner;
  std::unique_ptr<FromItem> left;
  std::unique_ptr<FromItem> right;
  ExpressionPtr condition;

  // Once names are bound:
  Source* source = nullptr;  ///< absent for a join
  /// The sources in it: places in the SELECT's.
  std::size_t firstSource = 0;
  std::size_t sourcesEnd = 0;
  // While SQLite's text is being written:
  JoinedSource* joined = nullptr;  ///< of a join that stands as one source within another
  std::string writtenCondition;

  FromItem();
  ~FromItem();
  bool isJoin() const { return left != nullptr; }
};

struct Top {
  double count = 0;
  bool percent = false;
};

/// A column that a query gives.
struct OutputColumn {
  std::u16string name;
  Type type = Type::Null;
  const Expression* expression = nullptr;  ///< absent for a union's
};

/// A form in which a column is asked for.
enum class Form : std::uint8_t {
  Value,   ///< what expressions calculate with
  Key,     ///< what compares, groups and sorts: a text's key, else the value
  Exact,   ///< what a reader of the result takes: a currency's ten-thousandths, a text perhaps as
           ///< bytes of a letter each, else the value
  RowId,   ///< the packed id of the table row that the column comes from
  RowKey,  ///< primary key of that row, its column `part`, in the form Key
};

struct Demand {
  int column = 0;
  Form form = Form::Value;
  int part = 0;  ///< of a RowKey
  bool operator==(const Demand&) const = default;
};

/// A join that stands as one source within another join; what is asked of its tables from outside
/// passes through it.
struct JoinedSource {
  int number = 0;
  JoinedSource* outer = nullptr;
  std::vector<std::string> exports;
  bool open = false;  ///< its own text is being written
};

/// A table or query within FROM.
struct Source {
  std::u16string name;  ///< by which columns are qualified
  int number = 0;       ///< unique within the statement
  const jet::Table* table = nullptr;
  std::unique_ptr<Query> query;  ///< where it is no table
  std::vector<OutputColumn> columns;
  JoinedSource* joined = nullptr;
  /// The columns asked for so far, in the order in which the source gives them.
  std::vector<Demand> demands;
  // While SQLite's text is being written:
  bool worksOutOnce = false;          ///< its rows are worked out before they are joined
  std::vector<std::string> computed;  ///< and with them these expressions, as columns k0, k1 …
};

/// One SELECT, without its ORDER BY.
struct Select {
  bool distinct = false;
  bool distinctRow = false;
  std::optional<Top> top;
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<FromItem>> from;
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;

  // Once names are bound:
  std::vector<std::unique_ptr<Source>> sources;
  /// Columns that `*` stands for.
  std::vector<ExpressionPtr> expanded;
  bool grouped = false;
};

/// A SELECT or a UNION of two queries, with its order.
struct Query {
  std::unique_ptr<Select> select;  ///< absent for a union
  std::unique_ptr<Query> left;
  std::unique_ptr<Query> right;
  bool all = false;  ///< UNION ALL
  std::vector<OrderTerm> orderBy;
  bool hasParameters = false;

  std::vector<OutputColumn> columns;  ///< once names are bound
};

/// The table row behind a column, through any number of queries that hand it on unchanged.
struct Origin {
  const jet::Table* table = nullptr;
  int column = 0;
  /// The table's place in the statement; one table may take part several times.
  const Source* source = nullptr;
};
/// Absent where the column is calculated, or its rows are not single rows of the table.
std::optional<Origin> originOf(const Query& query, int column);
std::optional<Origin> originOf(const Source& source, int column);

}  // namespace jetsql
