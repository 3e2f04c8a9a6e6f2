#include "platform/jetsql/functions/AggregateFunctions.h"

#include <cmath>
#include <memory>
#include <new>

#include "platform/jetsql/functions/SqlFunction.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// Aggregates that return one of the group's values.
class Kept : public Aggregate {
 public:
  void finish(const FunctionCall& call) override {
    if (kept_) call.setValue(kept_.get());
  }

 protected:
  bool isSet() const { return kept_ != nullptr; }
  void keep(sqlite3_value* value) {
    kept_.reset(sqlite3_value_dup(value));
    if (!kept_) throw std::bad_alloc();
  }

 private:
  struct Free {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
  };
  std::unique_ptr<sqlite3_value, Free> kept_;
};

/// The one value of a subquery.
class Single final : public Kept {
 public:
  void step(const FunctionCall& call) override {
    if (isSet()) throw error::subqueryRows();
    keep(call.raw(0));
  }
};

/// The first or last value that isn't null.
template <bool isFirst>
class FirstOrLast final : public Kept {
 public:
  void step(const FunctionCall& call) override {
    if (!call.isNull(0) && (!isFirst || !isSet())) keep(call.raw(0));
  }
};

/// Standard deviation and variance, of a sample or of the population.
template <bool isOfPopulation, bool isRoot>
class DeviationOrVariance final : public Aggregate {
 public:
  /// Updates mean and sum of squares row by row, by Welford's method.
  void step(const FunctionCall& call) override {
    if (call.isNull(0)) return;
    const double number = call.number(0);
    ++count_;
    const double before = number - mean_;
    mean_ += before / static_cast<double>(count_);
    squares_ += before * (number - mean_);
  }
  void finish(const FunctionCall& call) override {
    const std::int64_t divisor = isOfPopulation ? count_ : count_ - 1;
    if (divisor < 1) return;
    const double variance = squares_ / static_cast<double>(divisor);
    call.setNumber(isRoot ? std::sqrt(variance) : variance);
  }

 private:
  std::int64_t count_ = 0;
  double mean_ = 0;
  double squares_ = 0;
};

template <class A>
std::unique_ptr<Aggregate> make() {
  return std::make_unique<A>();
}

using W = Function::Writing;

constexpr Function kFunctions[] = {
    {u"COUNT(*)", 0, 0, "v", Type::Long, "count", nullptr, kPass, kFixed, W::Aggregate},
    {u"COUNT", 1, 1, "v", Type::Long, "count", nullptr, kPass, kFixed, W::Aggregate},
    {u"SUM", 1, 1, "n", Type::Double, "sum", nullptr, kPass, kFixed, W::Sum},
    {u"AVG", 1, 1, "n", Type::Double, "avg", nullptr, kPass, kFixed, W::Sum},
    {u"MIN", 1, 1, "c", Type::Any, "min", nullptr, kPass, kAsFirst, W::Aggregate},
    {u"MAX", 1, 1, "c", Type::Any, "max", nullptr, kPass, kAsFirst, W::Aggregate},
    {u"FIRST", 1, 1, "k", Type::Any, "jet_first", nullptr, kPass, kAsFirst, W::Aggregate,
     make<FirstOrLast<true>>},
    {u"LAST", 1, 1, "k", Type::Any, "jet_last", nullptr, kPass, kAsFirst, W::Aggregate,
     make<FirstOrLast<false>>},
    {u"STDEV", 1, 1, "n", Type::Double, "jet_stdev", nullptr, kPass, kFixed, W::Aggregate,
     make<DeviationOrVariance<false, true>>},
    {u"STDEVP", 1, 1, "n", Type::Double, "jet_stdevp", nullptr, kPass, kFixed, W::Aggregate,
     make<DeviationOrVariance<true, true>>},
    {u"VAR", 1, 1, "n", Type::Double, "jet_var", nullptr, kPass, kFixed, W::Aggregate,
     make<DeviationOrVariance<false, false>>},
    {u"VARP", 1, 1, "n", Type::Double, "jet_varp", nullptr, kPass, kFixed, W::Aggregate,
     make<DeviationOrVariance<true, false>>},
    // For a query that is used as a value.
    {u"", 1, 1, "v", Type::Any, "jet_single", nullptr, kPass, kFixed, W::Aggregate, make<Single>},
};

}  // namespace

std::span<const Function> aggregateFunctions() {
  return kFunctions;
}

}  // namespace jetsql
