#include <cmath>
#include <memory>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/SqlFunction.h"

namespace jetsql {
namespace {

/// A value of SQLite's, kept beyond the call that brought it.
class KeptValue {
 public:
  bool isSet() const { return value_ != nullptr; }
  void set(sqlite3_value* value) {
    value_.reset(sqlite3_value_dup(value));
    if (value_ == nullptr) throw std::bad_alloc();
  }
  void give(const FunctionCall& call) const {
    if (value_ != nullptr) call.giveSame(value_.get());
  }

 private:
  struct Free {
    void operator()(sqlite3_value* value) const { sqlite3_value_free(value); }
  };
  std::unique_ptr<sqlite3_value, Free> value_;
};

/// The first value of a group, null or not.
class Any final : public Aggregate {
 public:
  void step(const FunctionCall& call) override {
    if (!kept_.isSet()) kept_.set(call.raw(0));
  }
  void finish(const FunctionCall& call) override { kept_.give(call); }

 private:
  KeptValue kept_;
};

/// The one value of a subquery.
class Single final : public Aggregate {
 public:
  void step(const FunctionCall& call) override {
    if (kept_.isSet()) {
      throw error::engine(u"At most one record can be returned by this subquery.");
    }
    kept_.set(call.raw(0));
  }
  void finish(const FunctionCall& call) override { kept_.give(call); }

 private:
  KeptValue kept_;
};

/// The first or last value that isn't null.
template <bool isFirst>
class End final : public Aggregate {
 public:
  void step(const FunctionCall& call) override {
    if (!call.isNull(0) && (!isFirst || !kept_.isSet())) kept_.set(call.raw(0));
  }
  void finish(const FunctionCall& call) override { kept_.give(call); }

 private:
  KeptValue kept_;
};

/// The least or greatest value by its key, which comes second; numbers come before texts.
template <bool isLeast>
class Extreme final : public Aggregate {
 public:
  void step(const FunctionCall& call) override {
    if (call.isNull(0)) return;
    const bool isText = call.isBytes(1);
    const double number = isText ? 0 : call.number(1);
    const std::string_view key = isText ? call.bytes(1) : std::string_view();
    if (kept_.isSet()) {
      int order = isText == isText_ ? key.compare(key_) : (isText ? 1 : -1);
      if (!isText && !isText_) order = number < number_ ? -1 : (number > number_ ? 1 : 0);
      if (isLeast ? order >= 0 : order <= 0) return;
    }
    isText_ = isText;
    number_ = number;
    key_ = key;
    kept_.set(call.raw(0));
  }
  void finish(const FunctionCall& call) override { kept_.give(call); }

 private:
  KeptValue kept_;
  bool isText_ = false;
  double number_ = 0;
  std::string key_;
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
    call.giveNumber(isRoot ? std::sqrt(variance) : variance);
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
    {"jet_any", nullptr, make<Any>},
    {"jet_single", nullptr, make<Single>},
    {"jet_first", nullptr, make<End<true>>},
    {"jet_last", nullptr, make<End<false>>},
    {"jet_min", nullptr, make<Extreme<true>>},
    {"jet_max", nullptr, make<Extreme<false>>},
    {"jet_stdev", nullptr, make<Scatter<Spread::Deviation>>},
    {"jet_stdevp", nullptr, make<Scatter<Spread::DeviationOfAll>>},
    {"jet_var", nullptr, make<Scatter<Spread::Variance>>},
    {"jet_varp", nullptr, make<Scatter<Spread::VarianceOfAll>>},
};

}  // namespace

std::span<const SqlFunction> aggregateFunctions() {
  return kFunctions;
}

}  // namespace jetsql
