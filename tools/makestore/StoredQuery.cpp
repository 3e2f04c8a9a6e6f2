#include "makestore/StoredQuery.h"

#include <string_view>
#include <utility>

namespace makestore {
namespace {

enum Attribute : std::uint8_t {
  kStart = 0,
  kKind = 1,
  kParameter = 2,
  kOptions = 3,
  kSource = 5,
  kColumn = 6,
  kJoin = 7,
  kWhere = 8,
  kGroupBy = 9,
  kHaving = 10,
  kOrderBy = 11,
  kEnd = 255,
};

constexpr std::int16_t kSelect = 1;
constexpr std::int16_t kUnion = 9;
constexpr std::int32_t kUnionObject = 0x80;

constexpr std::int16_t kAllColumns = 0x01;
constexpr std::int16_t kDistinct = 0x02;
constexpr std::int16_t kTop = 0x10;
constexpr std::int16_t kUnionBase = 0x01;
constexpr std::int16_t kUnionDistinct = 0x02;

/// The aliases under which a union keeps its two halves.
constexpr std::u16string_view kFirstHalf = u"X7YZ_____1";
constexpr std::u16string_view kSecondHalf = u"X7YZ_____2";

std::vector<QueryRow> frame(std::int16_t kind) {
  return {{.attribute = kStart, .flag = std::int16_t{0}},
          {.attribute = kEnd},
          {.attribute = kKind, .flag = kind}};
}

}  // namespace

SelectQuery& SelectQuery::parameter(std::u16string name, std::int16_t type) {
  rows_.push_back({.attribute = kParameter, .name1 = std::move(name), .flag = type});
  return *this;
}

SelectQuery& SelectQuery::distinct() {
  options_ |= kDistinct;
  return *this;
}

SelectQuery& SelectQuery::top(int rows) {
  options_ |= kTop;
  const std::string digits = std::to_string(rows);
  top_.emplace(digits.begin(), digits.end());
  return *this;
}

SelectQuery& SelectQuery::allColumns() {
  options_ |= kAllColumns;
  return *this;
}

SelectQuery& SelectQuery::column(std::u16string expression, std::optional<std::u16string> alias) {
  rows_.push_back({.attribute = kColumn,
                   .name1 = std::move(alias),
                   .expression = std::move(expression),
                   .flag = std::int16_t{0}});
  return *this;
}

SelectQuery& SelectQuery::from(std::u16string table, std::optional<std::u16string> alias) {
  rows_.push_back({.attribute = kSource, .name1 = std::move(table), .name2 = std::move(alias)});
  return *this;
}

SelectQuery& SelectQuery::join(std::int16_t kind, std::u16string left, std::u16string right,
                               std::u16string condition) {
  rows_.push_back({.attribute = kJoin,
                   .name1 = std::move(left),
                   .name2 = std::move(right),
                   .expression = std::move(condition),
                   .flag = kind});
  return *this;
}

SelectQuery& SelectQuery::innerJoin(std::u16string left, std::u16string right,
                                    std::u16string condition) {
  return join(1, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::leftJoin(std::u16string left, std::u16string right,
                                   std::u16string condition) {
  return join(2, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::rightJoin(std::u16string left, std::u16string right,
                                    std::u16string condition) {
  return join(3, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::where(std::u16string condition) {
  rows_.push_back({.attribute = kWhere, .expression = std::move(condition)});
  return *this;
}

SelectQuery& SelectQuery::groupBy(std::u16string expression) {
  rows_.push_back({.attribute = kGroupBy, .expression = std::move(expression)});
  return *this;
}

SelectQuery& SelectQuery::having(std::u16string condition) {
  rows_.push_back({.attribute = kHaving, .expression = std::move(condition)});
  return *this;
}

SelectQuery& SelectQuery::orderBy(std::u16string expression, bool descending) {
  QueryRow row{.attribute = kOrderBy, .expression = std::move(expression)};
  if (descending) row.name1 = u"D";
  rows_.push_back(std::move(row));
  return *this;
}

StoredQuery SelectQuery::named(std::u16string name) const {
  StoredQuery query{.name = std::move(name), .rows = frame(kSelect)};
  query.rows.push_back({.attribute = kOptions, .name1 = top_, .flag = options_});
  query.rows.insert(query.rows.end(), rows_.begin(), rows_.end());
  return query;
}

StoredQuery unionQuery(std::u16string name, std::u16string first, std::u16string second, bool all) {
  StoredQuery query{.name = std::move(name), .rows = frame(kUnion), .objectFlags = kUnionObject};
  const int options = all ? kUnionBase : kUnionBase | kUnionDistinct;
  query.rows.push_back({.attribute = kOptions, .flag = static_cast<std::int16_t>(options)});
  query.rows.push_back(
      {.attribute = kSource, .name2 = std::u16string(kFirstHalf), .expression = std::move(first)});
  query.rows.push_back({.attribute = kSource,
                        .name2 = std::u16string(kSecondHalf),
                        .expression = std::move(second)});
  return query;
}

}  // namespace makestore
