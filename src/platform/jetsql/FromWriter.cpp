#include <algorithm>
#include <utility>

#include "platform/jetsql/SqlWriter.h"

namespace jetsql {
namespace {

/// True for a table or query, and for inner joins of such alone.
bool isInnerOnly(const FromItem& item) {
  if (!item.isJoin()) return true;
  return item.join == JoinKind::Inner && isInnerOnly(*item.left) && isInnerOnly(*item.right);
}

/// The sides of a join in the order in which SQLite gets them.
struct Sides {
  FromItem* left;
  FromItem* right;
  /// SQLite reads joins only from the left: a join on the right of another one has to stand as a
  /// source of its own, unless all of it may be strung out.
  bool wrapsRight;
};

Sides sidesOf(const FromItem& join) {
  Sides sides{join.left.get(), join.right.get(), false};
  const bool isInner = join.join == JoinKind::Inner;
  if (join.join == JoinKind::Right || (isInner && !isInnerOnly(*sides.right))) {
    std::swap(sides.left, sides.right);
  }
  sides.wrapsRight = sides.right->isJoin() && !(isInner && isInnerOnly(*sides.right));
  return sides;
}

bool asks(const Expression& expression, const Source& source) {
  const Expression& whole = meant(expression);
  if (whole.query || whole.source == &source) return true;
  return std::ranges::any_of(whole.arguments,
                             [&](const ExpressionPtr& each) { return asks(*each, source); });
}

/// True when nothing of the expression comes from a source or a query.
bool isConstant(const Expression& expression) {
  const Expression& whole = meant(expression);
  return !whole.query && whole.source == nullptr &&
         std::ranges::all_of(whole.arguments,
                             [](const ExpressionPtr& each) { return isConstant(*each); });
}

/// True when the expression has columns, and all of them are of that source.
bool asksOnly(const Expression& expression, const Source& source) {
  const Expression& whole = meant(expression);
  if (whole.kind == Expression::Kind::Column) return whole.source == &source;
  bool any = false;
  for (const ExpressionPtr& each : whole.arguments) {
    if (asksOnly(*each, source))
      any = true;
    else if (!isConstant(*each))
      return false;
  }
  return any && !whole.query;
}

}  // namespace

/// Tells which sources are asked through a join that stands around them.
void SqlWriter::prepareJoins(FromItem& item, JoinedSource* around) {
  if (!item.isJoin()) {
    item.source->joined = around;
    return;
  }
  const Sides sides = sidesOf(item);
  prepareJoins(*sides.left, around);
  JoinedSource* joined = around;
  if (sides.wrapsRight) {
    joins_.push_back(std::make_unique<JoinedSource>());
    joined = joins_.back().get();
    joined->number = fresh();
    joined->outer = around;
    sides.right->joined = joined;
  }
  prepareJoins(*sides.right, joined);
}

/// Conditions are written before any source, since they ask for columns as well.
void SqlWriter::writeConditions(FromItem& item) {
  if (!item.isJoin()) return;
  if (item.joined != nullptr) item.joined->open = true;
  item.writtenCondition = joinCondition(item);
  writeConditions(*item.left);
  writeConditions(*item.right);
  if (item.joined != nullptr) item.joined->open = false;
}

/// Where the right side is found by something calculated from its own columns alone, SQLite is told
/// to work that out once: it then looks the rows up, instead of calculating for each pair of rows.
std::string SqlWriter::joinCondition(const FromItem& join) {
  const FromItem& right = *sidesOf(join).right;
  const Expression& equality = meant(*join.condition);
  if (right.isJoin() || equality.op != Operator::Equal) return condition(equality);
  Source& source = *right.source;
  for (const std::size_t place : {0U, 1U}) {
    const Expression& own = meant(*equality.arguments[place]);
    const Expression& other = *equality.arguments[1 - place];
    if (!asksOnly(own, source) || asks(other, source)) continue;
    if (own.kind == Expression::Kind::Column) {
      source.worksOutOnce = source.query && !originOf(source, own.column);
      break;
    }
    const Comparing way = comparing(own.type, other.type);
    if (way != Comparing::Numbers && way != Comparing::Texts) break;
    source.worksOutOnce = true;
    source.computed.push_back(key(own));
    return "(" + key(other) + " = t" + std::to_string(source.number) + ".k" +
           std::to_string(source.computed.size() - 1) + ")";
  }
  return condition(equality);
}

std::string SqlWriter::fromText(Select& select) {
  const Select* grouping = std::exchange(grouping_, nullptr);
  for (const auto& item : select.from) writeConditions(*item);
  std::string whole;
  for (const auto& item : select.from) {
    whole += whole.empty() ? " FROM " : ", ";
    whole += joinText(*item);
    checkLength(whole.size());
  }
  grouping_ = grouping;
  return whole;
}

std::string SqlWriter::joinText(FromItem& item) {
  if (!item.isJoin()) return sourceText(*item.source);
  const Sides sides = sidesOf(item);
  std::string whole = joinText(*sides.left);
  if (sides.right->isJoin() && !sides.wrapsRight) {
    // Inner joins may stand in any order; their conditions gather behind the last one.
    std::string conditions = item.writtenCondition;
    appendInner(*sides.right, whole, conditions);
    return whole + " ON " + conditions;
  }
  whole += item.join == JoinKind::Inner ? " JOIN " : " LEFT JOIN ";
  whole += sides.wrapsRight ? wrapped(*sides.right) : sourceText(*sides.right->source);
  return whole + " ON " + item.writtenCondition;
}

void SqlWriter::appendInner(FromItem& item, std::string& whole, std::string& conditions) {
  if (!item.isJoin()) {
    whole += " JOIN " + sourceText(*item.source);
    return;
  }
  appendInner(*item.left, whole, conditions);
  appendInner(*item.right, whole, conditions);
  conditions += " AND " + item.writtenCondition;
}

/// A join as a source that gives what was asked of its tables.
std::string SqlWriter::wrapped(FromItem& item) {
  const std::string inner = joinText(item);
  std::string columns;
  for (std::size_t i = 0; i < item.joined->exports.size(); ++i) {
    if (i > 0) columns += ", ";
    columns += item.joined->exports[i] + " AS c" + std::to_string(i);
  }
  if (columns.empty()) columns = "1 AS c0";
  return "(SELECT " + columns + " FROM " + inner + ") AS j" + std::to_string(item.joined->number);
}

std::string SqlWriter::sourceText(Source& source) {
  const std::string name = "t" + std::to_string(source.number);
  std::string text = name;
  if (source.query) {
    text = "(" + query(*source.query, source.demands) + ") AS " + name;
  } else {
    const auto known = std::ranges::find(out_.tables, source.number, &TableUse::number);
    if (known == out_.tables.end()) {
      out_.tables.push_back({source.number, source.table, source.demands});
    } else {
      known->columns = source.demands;
    }
  }
  if (!source.worksOutOnce) return text;
  std::string columns = name + ".*";
  for (std::size_t i = 0; i < source.computed.size(); ++i) {
    columns += ", " + source.computed[i] + " AS k" + std::to_string(i);
  }
  // A limit keeps SQLite from merging it into what stands around it.
  return "(SELECT " + columns + " FROM " + text + " LIMIT -1) AS " + name;
}

/// A column of a source, which is asked for it from now on.
std::string SqlWriter::reference(Source& source, Demand demand) {
  if (source.table != nullptr && demand.form == Form::RowKey) {
    const int column = source.table->primaryKey()[static_cast<std::size_t>(demand.part)];
    const bool isText = jet::isText(source.table->columns()[static_cast<std::size_t>(column)].type);
    demand = {column, isText ? Form::Key : Form::Value, 0};
  }
  auto place = std::ranges::find(source.demands, demand);
  if (place == source.demands.end()) place = source.demands.insert(place, demand);
  std::string text =
      "t" + std::to_string(source.number) + ".c" + std::to_string(place - source.demands.begin());
  for (JoinedSource* joined = source.joined; joined != nullptr && !joined->open;
       joined = joined->outer) {
    auto exported = std::ranges::find(joined->exports, text);
    if (exported == joined->exports.end()) exported = joined->exports.insert(exported, text);
    text = "j" + std::to_string(joined->number) + ".c" +
           std::to_string(exported - joined->exports.begin());
  }
  return text;
}

}  // namespace jetsql
