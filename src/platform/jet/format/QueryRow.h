#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace jet {

/// Columns of MSysQueries.
struct QueryColumn {
  static constexpr std::u16string_view kObject = u"ObjectId";
  static constexpr std::u16string_view kAttribute = u"Attribute";
  static constexpr std::u16string_view kOrder = u"Order";  ///< among the rows of one attribute
  static constexpr std::u16string_view kName1 = u"Name1";
  static constexpr std::u16string_view kName2 = u"Name2";
  static constexpr std::u16string_view kExpression = u"Expression";
  static constexpr std::u16string_view kFlag = u"Flag";
  static constexpr std::u16string_view kExtra = u"LvExtra";  ///< Jet 4
};

/// What a row says of its query; in parentheses the columns that it uses.
enum class QueryAttribute : std::uint8_t {
  Start = 0,
  Kind = 1,       ///< (flag) a QueryKind
  Parameter = 2,  ///< (name1, flag) name and type
  Options = 3,    ///< (flag, name1) QueryOptions, and the number of rows for `kTop`
  Database = 4,   ///< another database that is read
  Source = 5,     ///< (name1, name2, expression) table, alias; a union's half as text
  Column = 6,     ///< (expression, name1) and its alias
  Join = 7,       ///< (name1, name2, expression, flag) two sources, condition, a QueryJoin
  Where = 8,      ///< (expression)
  GroupBy = 9,    ///< (expression)
  Having = 10,    ///< (expression)
  OrderBy = 11,   ///< (expression, name1) and `kDescending`
  End = 255,
};

/// Kinds of queries that return rows.
enum class QueryKind : std::int16_t { Select = 1, Union = 9 };

enum class QueryJoin : std::int16_t { Inner = 1, Left = 2, Right = 3 };

/// Bits of the options.
struct QueryOption {
  static constexpr std::int16_t kAllColumns = 0x01;  ///< of a union: always set
  static constexpr std::int16_t kDistinct = 0x02;    ///< of a union: without ALL
  static constexpr std::int16_t kDistinctRow = 0x08;
  static constexpr std::int16_t kTop = 0x10;
  static constexpr std::int16_t kPercent = 0x20;
};

/// Name2 of the sources that hold the halves of a union.
inline constexpr std::u16string_view kFirstHalf = u"X7YZ_____1";
inline constexpr std::u16string_view kSecondHalf = u"X7YZ_____2";

/// Name1 of an order term that descends.
inline constexpr std::u16string_view kDescending = u"D";

/// One row of a saved query as MSysQueries keeps it. Texts that are null are empty here.
struct QueryRow {
  QueryAttribute attribute = QueryAttribute::Start;
  std::u16string name1;
  std::u16string name2;
  std::u16string expression;
  std::int32_t flag = 0;
};

}  // namespace jet
