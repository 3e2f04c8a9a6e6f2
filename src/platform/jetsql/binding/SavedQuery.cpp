#include "platform/jetsql/binding/SavedQuery.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <list>
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
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute == QueryAttribute::Parameter) throw error::missingParameter();
      // A source that has a name has an expression only where it is in another database.
      const bool isForeignSource =
          row.attribute == QueryAttribute::Source && !row.name1.empty() && !row.expression.empty();
      if (row.attribute == QueryAttribute::Database || isForeignSource) {
        throw error::foreignQuery(name_);
      }
    }
    const jet::QueryRow* kindRow = last(QueryAttribute::Kind);
    const auto kind = kindRow == nullptr ? QueryKind::Select : QueryKind(kindRow->flag);
    if (kind != QueryKind::Union && kind != QueryKind::Select) {
      throw error::notSelectQuery(name_);
    }
    ParsedQuery query;
    if (kind == QueryKind::Union) {
      setHalves(query);
    } else {
      setSelect(query.select.emplace());
    }
    forEach(QueryAttribute::OrderBy, [&](const jet::QueryRow& row) {
      query.orderBy.push_back({parseExpression(row.expression), row.name1 == jet::kDescending});
    });
    return query;
  }

 private:
  template <class Body>
  void forEach(QueryAttribute attribute, Body body) const {
    for (const jet::QueryRow& row : rows_) {
      if (row.attribute == attribute) body(row);
    }
  }
  const jet::QueryRow* last(QueryAttribute attribute) const {
    const jet::QueryRow* found = nullptr;
    forEach(attribute, [&](const jet::QueryRow& row) { found = &row; });
    return found;
  }
  bool has(std::int32_t option) const {
    const jet::QueryRow* options = last(QueryAttribute::Options);
    return options != nullptr && (options->flag & option) != 0;
  }

  /// A union's halves are stored as text.
  void setHalves(ParsedQuery& query) const {
    std::vector<std::shared_ptr<const ParsedQuery>> halves;
    forEach(QueryAttribute::Source, [&](const jet::QueryRow& row) {
      halves.push_back(std::make_shared<const ParsedQuery>(parseStatement(row.expression)));
      if (halves.back()->hasParameters) throw error::missingParameter();
    });
    if (halves.size() != 2) throw error::damagedQuery(name_);
    query.all = !has(QueryOption::kDistinct);
    query.left = halves[0];
    query.right = halves[1];
  }

  void setSelect(ParsedSelect& select) {
    select.distinct = has(QueryOption::kDistinct);
    select.distinctRow = has(QueryOption::kDistinctRow);
    if (has(QueryOption::kTop)) select.top = Top{topCount(), has(QueryOption::kPercent)};
    forEach(QueryAttribute::Source, [&](const jet::QueryRow& row) { addFromItem(row); });
    forEach(QueryAttribute::Column, [&](const jet::QueryRow& row) {
      ParsedItem& item = select.items.emplace_back(parseItem(row.expression));
      if (!row.name1.empty()) item.alias = unbracketed(row.name1);
    });
    forEach(QueryAttribute::Join, [&](const jet::QueryRow& row) { addJoin(row); });
    forEach(QueryAttribute::Where,
            [&](const jet::QueryRow& row) { select.where = parseExpression(row.expression); });
    forEach(QueryAttribute::GroupBy, [&](const jet::QueryRow& row) {
      select.groupBy.push_back(parseExpression(row.expression));
    });
    forEach(QueryAttribute::Having,
            [&](const jet::QueryRow& row) { select.having = parseExpression(row.expression); });
    if (has(QueryOption::kAllColumns)) select.items.emplace_back();
    for (FromItem& each : fromItems_) select.from.push_back(std::move(each.item));
  }

  double topCount() const {
    double count = 0;
    const std::string digits = runtime::toUtf8(last(QueryAttribute::Options)->name1);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size())
      throw error::damagedQuery(name_);
    return count;
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

  /// The item that contains a source of that name; a plain table is added where none does.
  std::list<FromItem>::iterator fromItemNamed(const std::u16string& written) {
    const std::u16string name = unbracketed(written);
    const auto isSought = [&](const std::u16string& each) { return jet::sameName(each, name); };
    const auto found = std::ranges::find_if(fromItems_, [&](const FromItem& each) {
      return std::ranges::any_of(each.names, isSought);
    });
    if (found != fromItems_.end()) return found;
    jet::QueryRow row;
    row.name1 = name;
    addFromItem(row);
    return std::prev(fromItems_.end());
  }

  void addJoin(const jet::QueryRow& row) {
    constexpr std::array kKinds{JoinKind::Inner, JoinKind::Left, JoinKind::Right};
    const auto number = static_cast<std::size_t>(row.flag - 1);
    if (number >= kKinds.size()) throw error::damagedQuery(name_);
    const JoinKind kind = kKinds[number];
    const auto left = fromItemNamed(row.name1);
    const auto right = fromItemNamed(row.name2);
    ParsedExpression condition = parseExpression(row.expression);
    if (left == right) {
      // A further condition of a join that contains both tables already. It is put before the
      // earlier conditions.
      ParsedFrom& join = left->item;
      if (!join.isJoin() || join.join != kind) throw error::damagedQuery(name_);
      join.condition = binary(Operator::And, std::move(condition), std::move(*join.condition));
      return;
    }
    std::ranges::move(right->names, std::back_inserter(left->names));
    ParsedFrom join;
    join.join = kind;
    join.sides.push_back(std::move(left->item));
    join.sides.push_back(std::move(right->item));
    join.condition = std::move(condition);
    left->item = std::move(join);
    fromItems_.erase(right);
    fromItems_.splice(fromItems_.end(), fromItems_, left);
  }

  std::u16string_view name_;
  std::span<const jet::QueryRow> rows_;
  std::list<FromItem> fromItems_;
};

}  // namespace

ParsedQuery queryFromRows(std::u16string_view name, std::span<const jet::QueryRow> rows) {
  return Builder(name, rows).build();
}

}  // namespace jetsql
