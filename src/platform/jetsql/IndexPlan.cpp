#include "platform/jetsql/IndexPlan.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/runtime/CodePage.h"

namespace jetsql {
namespace {

using Test = Restriction::Test;

/// What a row costs when it is fetched by an index, with a row of a scan as the unit: few, or of a
/// table that stays in memory, and of a table whose pages are read again and again.
constexpr double kFetch = 2;
constexpr double kFetchOfMany = 10;
constexpr double kManyRows = 20'000;
/// What it costs to find the place in an index.
constexpr double kDescend = 6;
/// Of how many rows one has a given value, and one lies on the right side of a bound.
constexpr double kEqualShare = 20;
constexpr double kBoundShare = 6;

bool isLower(Test test) {
  return test == Test::Greater || test == Test::GreaterOrEqual;
}
bool isUpper(Test test) {
  return test == Test::Less || test == Test::LessOrEqual;
}
bool isSingleValue(Test test) {
  return test == Test::Equal || test == Test::IsNull;
}

jet::ColumnType typeOfColumn(const jet::Table& table, int column) {
  return table.columns()[static_cast<std::size_t>(column)].type;
}

/// True for types whose values can be handed to an index.
bool isSought(jet::ColumnType type) {
  switch (type) {
    case jet::ColumnType::Numeric:
    case jet::ColumnType::Binary:
    case jet::ColumnType::Ole:
    case jet::ColumnType::Block:
      return false;
    default:
      return true;
  }
}

/// True for the form in which the column's values compare.
bool isComparable(const jet::Table& table, Demand demand) {
  const bool isText = jet::isText(typeOfColumn(table, demand.column));
  return demand.form == (isText ? Form::Key : Form::Value);
}

bool fits(const jet::Table& table, const Restriction& restriction, int column) {
  if (restriction.column.column != column || restriction.column.form == Form::RowId) return false;
  if (!isSought(typeOfColumn(table, column))) return false;
  return restriction.test == Test::IsNull || isComparable(table, restriction.column);
}

class Chooser {
 public:
  Chooser(const jet::Table& table, const std::vector<Restriction>& restrictions,
          const std::vector<WantedOrder>& order)
      : table_(table),
        restrictions_(restrictions),
        order_(order),
        rows_(std::max(1.0, static_cast<double>(table.rowCount()))) {}

  IndexPlan choose() const {
    IndexPlan best = scan();
    for (std::size_t i = 0; i < table_.indexes().size(); ++i) {
      if (!table_.indexes()[i].seekable) continue;
      const auto plan = through(static_cast<int>(i));
      if (plan && total(*plan) < total(best)) best = *plan;
    }
    return best;
  }

 private:
  /// The cost with that of sorting afterwards.
  double total(const IndexPlan& plan) const {
    if (order_.empty() || plan.ordered) return plan.cost;
    return plan.cost + plan.rows * std::log2(plan.rows + 1) * 0.5;
  }

  /// The whole table; a value that is looked up again and again finds its rows without an index
  /// too, since the reading keeps a table of them.
  IndexPlan scan() const {
    IndexPlan plan;
    plan.cost = rows_;
    plan.rows = rows_;
    const auto equal = std::ranges::find_if(restrictions_, [&](const Restriction& each) {
      return each.test == Test::Equal && fits(table_, each, each.column.column);
    });
    if (equal == restrictions_.end()) return plan;
    plan.taken.push_back({equal->number, equal->column, equal->test});
    plan.rows = std::max(1.0, rows_ / kEqualShare);
    plan.cost = rows_ / 4 + 2 * kDescend;
    return plan;
  }

  const Restriction* find(int column, bool (*wanted)(Test)) const {
    for (const Restriction& each : restrictions_) {
      if (wanted(each.test) && fits(table_, each, column)) return &each;
    }
    return nullptr;
  }

  std::optional<IndexPlan> through(int place) const {
    const jet::Index& index = table_.indexes()[static_cast<std::size_t>(place)];
    IndexPlan plan;
    plan.index = place;
    plan.rows = rows_;
    bool hasValue = false;
    std::size_t column = 0;
    for (; column < index.columns.size(); ++column) {
      const Restriction* single = find(index.columns[column].column, isSingleValue);
      if (single == nullptr) break;
      hasValue = hasValue || single->test == Test::Equal;
      plan.taken.push_back({single->number, single->column, single->test});
      plan.rows /= kEqualShare;
    }
    const bool isAll = column == index.columns.size();
    for (const auto bound : {isLower, isUpper}) {
      const Restriction* range = isAll ? nullptr : find(index.columns[column].column, bound);
      if (range == nullptr) continue;
      hasValue = true;
      plan.taken.push_back({range->number, range->column, range->test});
      plan.rows /= kBoundShare;
    }
    // Rows that are null in all columns are not in such an index.
    if (index.ignoreNulls && !hasValue) return std::nullopt;
    if (index.unique && hasValue && isAll) plan.rows = 1;
    plan.rows = std::max(1.0, plan.rows);
    plan.cost = kDescend + plan.rows * (plan.rows > kManyRows ? kFetchOfMany : kFetch);
    addOrder(index, column, plan);
    if (plan.taken.empty() && !plan.ordered) return std::nullopt;
    return plan;
  }

  /// Tells whether the index gives the wanted order, with rows of equal keys put in order by the
  /// primary key where that is wanted behind it. `column` is the first one without a single value.
  void addOrder(const jet::Index& index, std::size_t column, IndexPlan& plan) const {
    std::size_t term = 0;
    for (; term < order_.size() && column < index.columns.size(); ++term, ++column) {
      const jet::IndexColumn& each = index.columns[column];
      if (order_[term].column.column != each.column || !isComparable(table_, order_[term].column) ||
          order_[term].descending == each.ascending) {
        return;
      }
    }
    if (term == 0) return;
    const std::vector<int> key = table_.primaryKey();
    std::vector<Demand> ties;
    for (; term < order_.size(); ++term) {
      const WantedOrder& wanted = order_[term];
      if (wanted.descending || !isComparable(table_, wanted.column) ||
          std::ranges::find(key, wanted.column.column) == key.end()) {
        return;
      }
      ties.push_back(wanted.column);
    }
    // Behind a part of the index's columns its other columns would come first.
    if (!ties.empty() && column < index.columns.size()) return;
    plan.ordered = true;
    plan.ties = std::move(ties);
  }

  const jet::Table& table_;
  const std::vector<Restriction>& restrictions_;
  const std::vector<WantedOrder>& order_;
  double rows_;
};

std::string_view sign(Test test) {
  switch (test) {
    case Test::Equal:
      return "=?";
    case Test::IsNull:
      return " is null";
    case Test::Greater:
      return ">?";
    case Test::GreaterOrEqual:
      return ">=?";
    case Test::Less:
      return "<?";
    case Test::LessOrEqual:
      return "<=?";
  }
  return "";
}

}  // namespace

std::string IndexPlan::describe(const jet::Table& table) const {
  std::string text = runtime::toUtf8(table.name()) + " by ";
  text += index < 0 ? (taken.empty() ? "scan" : "lookup")
                    : runtime::toUtf8(table.indexes()[static_cast<std::size_t>(index)].name);
  for (const Taken& each : taken) {
    const auto column = static_cast<std::size_t>(each.column.column);
    text += " " + runtime::toUtf8(table.columns()[column].name);
    text += sign(each.test);
  }
  if (ordered) text += " ordered";
  return text;
}

IndexPlan chooseIndex(const jet::Table& table, const std::vector<Restriction>& restrictions,
                      const std::vector<WantedOrder>& order) {
  return Chooser(table, restrictions, order).choose();
}

}  // namespace jetsql
