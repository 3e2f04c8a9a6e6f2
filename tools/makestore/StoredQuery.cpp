#include "makestore/StoredQuery.h"

#include <string_view>
#include <utility>

#include "platform/jet/format/ObjectRow.h"

namespace makestore {
namespace {

using jet::QueryAttribute;
using jet::QueryJoin;
using jet::QueryKind;
using jet::QueryOption;

/// The three rows that every saved query has.
std::vector<QueryRow> frame(QueryKind kind) {
  return {{.attribute = QueryAttribute::Start, .flag = std::int16_t{0}},
          {.attribute = QueryAttribute::End},
          {.attribute = QueryAttribute::Kind, .flag = static_cast<std::int16_t>(kind)}};
}

}  // namespace

SelectQuery& SelectQuery::parameter(std::u16string name, std::int16_t type) {
  rows_.push_back({.attribute = QueryAttribute::Parameter, .name1 = std::move(name), .flag = type});
  return *this;
}

SelectQuery& SelectQuery::distinct() {
  options_ |= QueryOption::kDistinct;
  return *this;
}

SelectQuery& SelectQuery::top(int rows) {
  options_ |= QueryOption::kTop;
  const std::string digits = std::to_string(rows);
  top_.emplace(digits.begin(), digits.end());
  return *this;
}

SelectQuery& SelectQuery::allColumns() {
  options_ |= QueryOption::kAllColumns;
  return *this;
}

SelectQuery& SelectQuery::column(std::u16string expression, std::optional<std::u16string> alias) {
  rows_.push_back({.attribute = QueryAttribute::Column,
                   .name1 = std::move(alias),
                   .expression = std::move(expression),
                   .flag = std::int16_t{0}});
  return *this;
}

SelectQuery& SelectQuery::from(std::u16string table, std::optional<std::u16string> alias) {
  rows_.push_back(
      {.attribute = QueryAttribute::Source, .name1 = std::move(table), .name2 = std::move(alias)});
  return *this;
}

SelectQuery& SelectQuery::join(QueryJoin kind, std::u16string left, std::u16string right,
                               std::u16string condition) {
  rows_.push_back({.attribute = QueryAttribute::Join,
                   .name1 = std::move(left),
                   .name2 = std::move(right),
                   .expression = std::move(condition),
                   .flag = static_cast<std::int16_t>(kind)});
  return *this;
}

SelectQuery& SelectQuery::innerJoin(std::u16string left, std::u16string right,
                                    std::u16string condition) {
  return join(QueryJoin::Inner, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::leftJoin(std::u16string left, std::u16string right,
                                   std::u16string condition) {
  return join(QueryJoin::Left, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::rightJoin(std::u16string left, std::u16string right,
                                    std::u16string condition) {
  return join(QueryJoin::Right, std::move(left), std::move(right), std::move(condition));
}

SelectQuery& SelectQuery::where(std::u16string condition) {
  rows_.push_back({.attribute = QueryAttribute::Where, .expression = std::move(condition)});
  return *this;
}

SelectQuery& SelectQuery::groupBy(std::u16string expression) {
  rows_.push_back({.attribute = QueryAttribute::GroupBy, .expression = std::move(expression)});
  return *this;
}

SelectQuery& SelectQuery::having(std::u16string condition) {
  rows_.push_back({.attribute = QueryAttribute::Having, .expression = std::move(condition)});
  return *this;
}

SelectQuery& SelectQuery::orderBy(std::u16string expression, bool descending) {
  QueryRow row{.attribute = QueryAttribute::OrderBy, .expression = std::move(expression)};
  if (descending) row.name1 = jet::kDescending;
  rows_.push_back(std::move(row));
  return *this;
}

StoredQuery SelectQuery::named(std::u16string name) const {
  StoredQuery query{.name = std::move(name), .rows = frame(QueryKind::Select)};
  query.rows.push_back({.attribute = QueryAttribute::Options, .name1 = top_, .flag = options_});
  query.rows.insert(query.rows.end(), rows_.begin(), rows_.end());
  return query;
}

StoredQuery unionQuery(std::u16string name, std::u16string first, std::u16string second, bool all) {
  StoredQuery query{.name = std::move(name),
                    .rows = frame(QueryKind::Union),
                    .objectFlags = jet::ObjectFlag::kUnionQuery};
  const int options = QueryOption::kAllColumns | (all ? 0 : QueryOption::kDistinct);
  query.rows.push_back(
      {.attribute = QueryAttribute::Options, .flag = static_cast<std::int16_t>(options)});
  query.rows.push_back({.attribute = QueryAttribute::Source,
                        .name2 = std::u16string(jet::kFirstHalf),
                        .expression = std::move(first)});
  query.rows.push_back({.attribute = QueryAttribute::Source,
                        .name2 = std::u16string(jet::kSecondHalf),
                        .expression = std::move(second)});
  return query;
}

}  // namespace makestore
