#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/jet/engine/Table.h"
#include "platform/jetsql/Query.h"

namespace jetsql {

/// A condition on one column of a table, whose value comes when the table is read.
struct Restriction {
  enum class Test : std::uint8_t { Equal, IsNull, Greater, GreaterOrEqual, Less, LessOrEqual };

  Test test = Test::Equal;
  Demand column;
  int number = 0;  ///< the caller's own number for it
};

/// A column by which the rows are wanted in order.
struct WantedOrder {
  Demand column;
  bool descending = false;
};

/// How a table is read: whole, by a range of an index, or by looking up values that are equal.
struct IndexPlan {
  /// A restriction that the reading takes over; its value is the one of this place. Rows that are
  /// read meet the equal and null ones for certain; the bounds they may miss.
  struct Taken {
    int number = 0;
    Demand column;
    Restriction::Test test = Restriction::Test::Equal;
    bool isSingle() const { return test <= Restriction::Test::IsNull; }
    bool operator==(const Taken&) const = default;
  };

  int index = -1;            ///< place in the table's indexes; -1 without one
  std::vector<Taken> taken;  ///< single values first, in the order of the index's columns
  bool ordered = false;      ///< the rows come in the wanted order
  /// Columns of the wanted order that stand behind the index's own: rows with equal index keys are
  /// put in order by these.
  std::vector<Demand> ties;
  double cost = 0;
  double rows = 0;

  /// "table by index column=? column>=? ordered", for people.
  std::string describe(const jet::Table& table) const;
  bool samePath(const IndexPlan& other) const {
    return index == other.index && taken == other.taken && ordered == other.ordered &&
           ties == other.ties;
  }
};

/// The cheapest way to read the table under these restrictions in this order.
IndexPlan chooseIndex(const jet::Table& table, const std::vector<Restriction>& restrictions,
                      const std::vector<WantedOrder>& order);

}  // namespace jetsql
