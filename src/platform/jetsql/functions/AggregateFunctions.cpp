#include "platform/jetsql/functions/AggregateFunctions.h"

#include <cmath>
#include <memory>
#include <new>

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
    if (isSet()) throw error::engine(u"At most one record can be returned by this subquery.");
    keep(call.raw(0));
  }
};

/// The first or last value that isn't null.
template <bool isFirst>
class End final : public Kept {
 public:
  void step(const FunctionCall& call) override {
    if (!call.isNull(0) && (!isFirst || !isSet())) keep(call.raw(0));
  }
};

enum class Spread : std::uint8_t { Deviation, DeviationOfAll, Variance, VarianceOfAll };

/// Standard deviation and variance, of a sample or of all.
template <Spread kind>
class Scatter final : public Aggregate {
 public:
  void step(const FunctionCall& call) override {
    if (call.isNull(0)) return;
    const double number = call.number(0);
    ++count_;
    const double before = number - mean_;
    mean_ += before / static_cast<double>(count_);
    squares_ += before * (number - mean_);
  }
  void finish(const FunctionCall& call) override {
    constexpr bool isOfAll = kind == Spread::DeviationOfAll || kind == Spread::VarianceOfAll;
    constexpr bool isRoot = kind == Spread::Deviation || kind == Spread::DeviationOfAll;
    const std::int64_t divisor = isOfAll ? count_ : count_ - 1;
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

constexpr SqlFunction kFunctions[] = {
    {.name = "jet_single", .aggregate = make<Single>},
    {.name = "jet_first", .aggregate = make<End<true>>},
    {.name = "jet_last", .aggregate = make<End<false>>},
    {.name = "jet_stdev", .aggregate = make<Scatter<Spread::Deviation>>},
    {.name = "jet_stdevp", .aggregate = make<Scatter<Spread::DeviationOfAll>>},
    {.name = "jet_var", .aggregate = make<Scatter<Spread::Variance>>},
    {.name = "jet_varp", .aggregate = make<Scatter<Spread::VarianceOfAll>>},
};

}  // namespace

std::span<const SqlFunction> aggregateFunctions() {
  return kFunctions;
}

}  // namespace jetsql
