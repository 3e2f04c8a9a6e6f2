#include "platform/jetsql/binding/SavedQuery.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/jet/format/TextKey.h"
#include "platform/jetsql/syntax/ExpressionParser.h"
#include "platform/jetsql/syntax/QueryParser.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/runtime/CodePage.h"

namespace jetsql {
namespace {

using jet::QueryAttribute;
using jet::QueryKind;
using jet::QueryOption;

constexpr std::size_t kMostFromItems = 256;

std::u16string unbracketed(std::u16string_view name) {
  if (name.size() >= 2 && name.front() == u'[' && name.back() == u']') {
    name = name.substr(1, name.size() - 2);
  }
  return std::u16string(name);
}

class Builder {
 public:
  Builder(std::u16string_view name, std::span<const jet::QueryRow> rows)
      : name_(name), rows_(rows) {}

  ParsedQuery build() {
    QueryKind kind = QueryKind::Select;
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute == QueryAttribute::Kind) kind = static_cast<QueryKind>(row.flag);
      if (row.attribute == QueryAttribute::Parameter) throw error::missingParameter();
      // A source that has a name has an expression only where it is in another database.
      const bool isForeignSource =
          row.attribute == QueryAttribute::Source && !row.name1.empty() && !row.expression.empty();
      if (row.attribute == QueryAttribute::Database || isForeignSource) {
        throw error::foreignQuery(name_);
      }
      if (row.attribute == QueryAttribute::Options) options_ = &row;
    }
    if (kind != QueryKind::Union && kind != QueryKind::Select) {
      throw error::notSelectQuery(name_);
    }
    ParsedQuery query = kind == QueryKind::Union ? unionQuery() : selectQuery();
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute != QueryAttribute::OrderBy) continue;
      query.orderBy.push_back({parseExpression(row.expression), row.name1 == jet::kDescending});
    }
    return query;
  }

 private:
  bool has(std::int32_t option) const {
    return options_ != nullptr && (options_->flag & option) != 0;
  }

  /// A union's halves are stored as text.
  ParsedQuery unionQuery() const {
    std::vector<std::shared_ptr<const ParsedQuery>> halves;
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute != QueryAttribute::Source) continue;
      halves.push_back(std::make_shared<const ParsedQuery>(parseStatement(row.expression)));
      if (halves.back()->hasParameters) throw error::missingParameter();
    }
    if (halves.size() != 2) throw error::damagedQuery(name_);
    ParsedQuery query;
    query.all = !has(QueryOption::kDistinct);
    query.left = halves[0];
    query.right = halves[1];
    return query;
  }

  ParsedQuery selectQuery() {
    ParsedSelect select;
    select.distinct = has(QueryOption::kDistinct);
    select.distinctRow = has(QueryOption::kDistinctRow);
    if (has(QueryOption::kTop)) select.top = Top{topCount(), has(QueryOption::kPercent)};
    for (const jet::QueryRow& row : rows_) addRow(row, select);
    if (has(QueryOption::kAllColumns)) select.items.emplace_back();
    for (FromItem& each : fromItems_) select.from.push_back(std::move(each.item));
    ParsedQuery query;
    query.select = std::move(select);
    return query;
  }

  double topCount() const {
    double count = 0;
    const std::string digits = runtime::toUtf8(options_->name1);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size())
      throw error::damagedQuery(name_);
    return count;
  }

  void addRow(const jet::QueryRow& row, ParsedSelect& select) {
    switch (row.attribute) {
      case QueryAttribute::Source:
        addFromItem(row);
        break;
      case QueryAttribute::Column: {
        ParsedItem item = parseItem(row.expression);
        if (!row.name1.empty()) item.alias = unbracketed(row.name1);
        select.items.push_back(std::move(item));
        break;
      }
      case QueryAttribute::Join:
        addJoin(row);
        break;
      case QueryAttribute::Where:
        select.where = parseExpression(row.expression);
        break;
      case QueryAttribute::GroupBy:
        select.groupBy.push_back(parseExpression(row.expression));
        break;
      case QueryAttribute::Having:
        select.having = parseExpression(row.expression);
        break;
      case QueryAttribute::Start:
      case QueryAttribute::Kind:
      case QueryAttribute::Parameter:
      case QueryAttribute::Options:
      case QueryAttribute::Database:
      case QueryAttribute::OrderBy:
      case QueryAttribute::End:
        break;
    }
  }

  /// A source of FROM: at first a table, later perhaps a join, found by any table name in it.
  struct FromItem {
    std::vector<std::u16string> names;
    ParsedFrom item;
  };

  void addFromItem(const jet::QueryRow& row) {
    if (fromItems_.size() >= kMostFromItems) throw error::tooComplex();
    ParsedFrom item;
    item.name = unbracketed(row.name1);
    item.alias = unbracketed(row.name2);
    if (item.name.empty()) {
      item.query = std::make_shared<const ParsedQuery>(parseStatement(row.expression));
    }
    fromItems_.push_back({{item.alias.empty() ? item.name : item.alias}, std::move(item)});
  }

  /// The index of the source that contains the name; a plain table is added where none does.
  std::size_t fromItemNamed(const std::u16string& written) {
    const std::u16string name = unbracketed(written);
    for (std::size_t i = 0; i < fromItems_.size(); ++i) {
      for (const std::u16string& each : fromItems_[i].names) {
        if (jet::sameName(each, name)) return i;
      }
    }
    jet::QueryRow row;
    row.name1 = name;
    addFromItem(row);
    return fromItems_.size() - 1;
  }

  JoinKind joinOf(const jet::QueryRow& row) const {
    switch (static_cast<jet::QueryJoin>(row.flag)) {
      case jet::QueryJoin::Inner:
        return JoinKind::Inner;
      case jet::QueryJoin::Left:
        return JoinKind::Left;
      case jet::QueryJoin::Right:
        return JoinKind::Right;
    }
    throw error::damagedQuery(name_);
  }

  void addJoin(const jet::QueryRow& row) {
    const JoinKind kind = joinOf(row);
    const std::size_t left = fromItemNamed(row.name1);
    const std::size_t right = fromItemNamed(row.name2);
    ParsedExpression condition = parseExpression(row.expression);
    if (left == right) {
      // A further condition of a join that contains both tables already. It is put before the
      // earlier conditions.
      ParsedFrom& join = fromItems_[left].item;
      if (!join.isJoin() || join.join != kind) throw error::damagedQuery(name_);
      join.condition = binary(Operator::And, std::move(condition), std::move(*join.condition));
      return;
    }
    FromItem joined;
    joined.names = std::move(fromItems_[left].names);
    for (std::u16string& name : fromItems_[right].names) joined.names.push_back(std::move(name));
    joined.item.join = kind;
    joined.item.sides.push_back(std::move(fromItems_[left].item));
    joined.item.sides.push_back(std::move(fromItems_[right].item));
    joined.item.condition = std::move(condition);
    const auto [low, high] = std::minmax(left, right);
    fromItems_.erase(fromItems_.begin() + static_cast<std::ptrdiff_t>(high));
    fromItems_.erase(fromItems_.begin() + static_cast<std::ptrdiff_t>(low));
    fromItems_.push_back(std::move(joined));
  }

  std::u16string_view name_;
  std::span<const jet::QueryRow> rows_;
  const jet::QueryRow* options_ = nullptr;
  std::vector<FromItem> fromItems_;
};

}  // namespace

ParsedQuery queryFromRows(std::u16string_view name, std::span<const jet::QueryRow> rows) {
  return Builder(name, rows).build();
}

}  // namespace jetsql
