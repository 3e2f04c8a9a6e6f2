#include "platform/jetsql/functions/NumberFunctions.h"

#include <cmath>
#include <functional>

#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

/// `+` where only the rows tell whether to join texts or to add numbers.
void plus(const FunctionCall& call) {
  if (call.isText(0) && call.isText(1)) return call.setText(call.text(0) + call.text(1));
  call.setNumber(call.number(0) + call.number(1));
}

void divide(const FunctionCall& call) {
  const double divisor = call.number(1);
  if (divisor == 0) throw error::divisionByZero();
  call.setNumber(call.number(0) / divisor);
}

/// Both operands are rounded first.
template <class Operation>
void divideIntegers(const FunctionCall& call) {
  const std::int64_t divisor = call.integer(1);
  if (divisor == 0) throw error::divisionByZero();
  call.setInteger(Operation()(call.integer(0), divisor));
}

void power(const FunctionCall& call) {
  const double result = std::pow(call.number(0), call.number(1));
  if (std::isnan(result)) throw error::invalidCall();
  call.setNumber(result);
}

/// Integers stay integers.
void setRounded(const FunctionCall& call, double result) {
  if (sqlite3_value_type(call.raw(0)) == SQLITE_INTEGER && std::fabs(result) < 9.0e15) {
    return call.setInteger(static_cast<std::int64_t>(result));
  }
  call.setNumber(result);
}

template <double (*toInteger)(double)>
void rounded(const FunctionCall& call) {
  setRounded(call, toInteger(call.number(0)));
}

void round(const FunctionCall& call) {
  const std::int32_t decimals = call.count() > 1 ? call.integer(1) : 0;
  if (decimals < 0) throw error::invalidCall();
  if (decimals > 15) return setRounded(call, call.number(0));
  const double scale = std::pow(10.0, decimals);
  setRounded(call, std::nearbyint(call.number(0) * scale) / scale);
}

void sign(const FunctionCall& call) {
  const double number = call.number(0);
  call.setInteger(number > 0 ? 1 : (number < 0 ? -1 : 0));
}

/// Raises the error where the function has no value.
template <double (*function)(double)>
void calculated(const FunctionCall& call) {
  const double result = function(call.number(0));
  if (std::isnan(result) || result == -HUGE_VAL) throw error::invalidCall();
  call.setNumber(result);
}

constexpr Function kFunctions[] = {
    {u"ABS", 1, 1, "n", Type::Double, "jet_abs", rounded<std::fabs>, kPass, kAsFirst},
    {u"INT", 1, 1, "n", Type::Double, "jet_int", rounded<std::floor>, kPass, kAsFirst},
    {u"FIX", 1, 1, "n", Type::Double, "jet_fix", rounded<std::trunc>, kPass, kAsFirst},
    {u"ROUND", 1, 2, "n", Type::Double, "jet_round", round, kPass, kAsFirst},
    {u"SGN", 1, 1, "n", Type::Integer, "jet_sgn", sign},
    {u"SQR", 1, 1, "n", Type::Double, "jet_sqr", calculated<std::sqrt>},
    {u"EXP", 1, 1, "n", Type::Double, "jet_exp", calculated<std::exp>},
    {u"LOG", 1, 1, "n", Type::Double, "jet_log", calculated<std::log>},
    // What operators need.
    helperFunction("jet_plus", plus),
    helperFunction("jet_divide", divide),
    helperFunction("jet_intdivide", divideIntegers<std::divides<>>),
    helperFunction("jet_modulo", divideIntegers<std::modulus<>>),
    helperFunction("jet_power", power),
};

}  // namespace

std::span<const Function> numberFunctions() {
  return kFunctions;
}

}  // namespace jetsql
