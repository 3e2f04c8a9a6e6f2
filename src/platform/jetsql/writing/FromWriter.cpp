#include "platform/jetsql/writing/FromWriter.h"

#include <algorithm>
#include <utility>

#include "platform/jetsql/binding/BoundQuery.h"
#include "platform/jetsql/writing/ExpressionWriter.h"
#include "platform/jetsql/writing/QueryWriter.h"

namespace jetsql {
namespace {

/// The sides of a join in the order in which SQLite gets them. SQLite builds a temporary table for
/// a join on the right side, so it becomes the left side where that is allowed.
std::pair<const BoundFrom*, const BoundFrom*> sidesOf(const BoundFrom& join) {
  const BoundFrom* left = &join.sides[0];
  const BoundFrom* right = &join.sides[1];
  const bool isBetterLeft = join.join == JoinKind::Inner && right->isJoin() && !left->isJoin();
  if (join.join == JoinKind::Right || isBetterLeft) std::swap(left, right);
  return {left, right};
}

class FromWriter {
 public:
  explicit FromWriter(StatementWriter& writer) : writer_(writer), expressions_(writer) {}

  std::string write(const BoundSelect& select) {
    // Conditions are written before any source, since they request columns as well.
    for (const BoundFrom& item : select.from) writeConditions(item);
    std::vector<std::string> items;
    for (const BoundFrom& item : select.from) items.push_back(itemText(item));
    return items.empty() ? "" : " FROM " + joined(items, ", ");
  }

 private:
  void writeConditions(const BoundFrom& item) {
    if (!item.isJoin()) return;
    conditions_[&item] = joinCondition(item);
    for (const BoundFrom& side : item.sides) writeConditions(side);
  }

  /// If the condition compares a value that is calculated from the right side's columns alone, this
  /// value becomes a column of the right side: SQLite then calculates it once for each row, and
  /// looks rows up by it, instead of calculating it for each pair of rows.
  std::string joinCondition(const BoundFrom& join) {
    const BoundExpression& equality = *join.condition;
    const BoundFrom& right = *sidesOf(join).second;
    if (right.isJoin() || equality.kind != ExpressionKind::Binary ||
        equality.op != Operator::Equal) {
      return expressions_.condition(equality);
    }
    const Source& source = *right.source;
    for (const std::size_t side : {0U, 1U}) {
      const BoundExpression& own = *equality.arguments[side];
      const BoundExpression& other = *equality.arguments[1 - side];
      const SourceUse use = sourcesOf(own);
      const SourceUse otherUse = sourcesOf(other);
      if (use.hasQuery || use.sources != std::set<const Source*>{&source}) continue;
      if (otherUse.hasQuery || otherUse.sources.contains(&source)) continue;
      if (own.kind == ExpressionKind::Column) {
        // A calculated column of a query: an entry without expressions makes it a subquery of its
        // own, so that SQLite calculates the column once for each row.
        if (source.query && !originOf(own)) computed_[&source];
        break;
      }
      const Comparing way = comparing(own.type, other.type);
      if (way != Comparing::Plain && way != Comparing::Texts) break;
      std::vector<std::string>& computed = computed_[&source];
      computed.push_back(expressions_.comparedAmong(own, equality.arguments));
      return "(" + expressions_.comparedAmong(other, equality.arguments) + " = " +
             sourceName(source) + ".k" + std::to_string(computed.size() - 1) + ")";
    }
    return expressions_.condition(equality);
  }

  std::string itemText(const BoundFrom& item) {
    if (!item.isJoin()) return sourceText(*item.source);
    const auto [left, right] = sidesOf(item);
    std::string text = itemText(*left);
    text += item.join == JoinKind::Inner ? " JOIN " : " LEFT JOIN ";
    text += right->isJoin() ? "(" + itemText(*right) + ")" : itemText(*right);
    return text + " ON " + conditions_[&item];
  }

  std::string sourceText(const Source& source) {
    const std::string name = sourceName(source);
    const UsedColumns& usedColumns = writer_.usedColumns(source);
    std::string text = name;
    if (source.query) {
      Request request{.columns = usedColumns.columns, .rows = usedColumns.rows};
      text = "(" + writeQuery(writer_, *source.query, request) + ") AS " + name;
    } else {
      writer_.addTable(source);
    }
    const auto computed = computed_.find(&source);
    if (computed == computed_.end()) return text;
    std::vector<std::string> columns;
    for (const int column : usedColumns.columns)
      columns.push_back(name + ".c" + std::to_string(column));
    for (const int row : usedColumns.rows) columns.push_back(writer_.rowId(source, row));
    for (std::size_t i = 0; i < computed->second.size(); ++i) {
      columns.push_back(computed->second[i] + " AS k" + std::to_string(i));
    }
    // A limit keeps SQLite from merging it into the query around it.
    return "(SELECT " + joined(columns, ", ") + " FROM " + text + " LIMIT -1) AS " + name;
  }

  StatementWriter& writer_;
  ExpressionWriter expressions_;
  std::map<const BoundFrom*, std::string> conditions_;
  /// Sources whose rows are calculated before the join, with these expressions as columns k0, k1 …
  std::map<const Source*, std::vector<std::string>> computed_;
};

}  // namespace

std::string writeFrom(StatementWriter& writer, const BoundSelect& select) {
  return FromWriter(writer).write(select);
}

}  // namespace jetsql
