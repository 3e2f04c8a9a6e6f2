#include "platform/jetsql/sqlite/IndexPlan.h"

#include <algorithm>
#include <optional>

#include "platform/jetsql/functions/Type.h"

namespace jetsql {
namespace {

using Test = Restriction::Test;

/// Cost of a row that is fetched by an index; the higher one applies to more than `kManyRows` rows,
/// since pages are then read repeatedly.
constexpr double kFetch = 2;
constexpr double kFetchOfMany = 10;
constexpr double kManyRows = 20'000;
/// Cost of a descent in an index.
constexpr double kDescend = 6;
/// Assumed selectivity: one row in this many meets an equality, or a bound.
constexpr double kEqualShare = 20;
constexpr double kBoundShare = 6;
/// Values that are looked up repeatedly are found without an index too, since the reader builds a
/// hash table of the rows: a lookup is assumed to cost a scan divided by this.
constexpr double kLookupShare = 4;

/// True for columns whose values can be looked up, in an index or in a hash table.
bool canBeLookedUp(const jet::Table& table, jet::ColumnIndex column) {
  const Type type = typeOf(table.column(column).type);
  return type != Type::Decimal && type != Type::Binary;
}

class Chooser {
 public:
  Chooser(const jet::Table& table, const std::vector<Restriction>& restrictions)
      : table_(table),
        restrictions_(restrictions),
        rows_(std::max(1.0, static_cast<double>(table.rowCount()))) {}

  IndexPlan choose() const {
    IndexPlan best = scan();
    for (std::size_t i = 0; i < table_.indexes().size(); ++i) {
      const auto plan = through(jet::IndexNumber(i));
      if (plan && plan->cost < best.cost) best = *plan;
    }
    return best;
  }

 private:
  IndexPlan scan() const {
    IndexPlan plan{.cost = rows_, .rows = rows_};
    const auto equal = std::ranges::find_if(restrictions_, [&](const Restriction& each) {
      return each.test == Test::Equal && canBeLookedUp(table_, each.column);
    });
    if (equal == restrictions_.end()) return plan;
    plan.taken.push_back(*equal);
    plan.rows = std::max(1.0, rows_ / kEqualShare);
    // On a small table an index on the column costs less than this.
    plan.cost = rows_ / kLookupShare + 2 * kDescend;
    return plan;
  }

  const Restriction* find(jet::ColumnIndex column, Test test) const {
    const auto found = std::ranges::find_if(restrictions_, [&](const Restriction& each) {
      return each.test == test && each.column == column && canBeLookedUp(table_, column);
    });
    return found == restrictions_.end() ? nullptr : &*found;
  }

  /// The plan that uses an index; absent where no restriction applies to it.
  std::optional<IndexPlan> through(jet::IndexNumber number) const {
    const jet::Index& index = table_.index(number);
    if (!index.seekable) return std::nullopt;
    IndexPlan plan{.index = number, .rows = rows_};
    bool hasValue = false;
    bool hasNull = false;
    std::size_t column = 0;
    for (; column < index.columns.size(); ++column) {
      const Restriction* single = find(index.columns[column].column, Test::Equal);
      (single != nullptr ? hasValue : hasNull) = true;
      if (single == nullptr) single = find(index.columns[column].column, Test::IsNull);
      if (single == nullptr) break;
      plan.taken.push_back(*single);
      plan.rows /= kEqualShare;
    }
    plan.isUnique = index.unique && !hasNull && column == index.columns.size();
    for (const Test bound : {Test::Lower, Test::Upper}) {
      if (column == index.columns.size()) break;
      const Restriction* range = find(index.columns[column].column, bound);
      if (range == nullptr) continue;
      hasValue = true;
      plan.taken.push_back(*range);
      plan.rows /= kBoundShare;
    }
    // Rows that are null in all columns are not in such an index.
    if (plan.taken.empty() || (index.ignoreNulls && !hasValue)) return std::nullopt;
    plan.rows = plan.isUnique ? 1 : std::max(1.0, plan.rows);
    plan.cost = kDescend + plan.rows * (plan.rows > kManyRows ? kFetchOfMany : kFetch);
    return plan;
  }

  const jet::Table& table_;
  const std::vector<Restriction>& restrictions_;
  double rows_;
};

}  // namespace

IndexPlan chooseIndex(const jet::Table& table, const std::vector<Restriction>& restrictions) {
  return Chooser(table, restrictions).choose();
}

}  // namespace jetsql
