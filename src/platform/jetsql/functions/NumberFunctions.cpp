#include "platform/jetsql/functions/NumberFunctions.h"

#include <cmath>

#include "platform/jetsql/syntax/StatementError.h"

namespace jetsql {
namespace {

runtime::RunTimeError divisionByZero() {
  return error::statement(u"Division by zero");
}

/// `+` where only the rows tell whether texts join or numbers add.
void plus(const FunctionCall& call) {
  if (call.isText(0) && call.isText(1)) return call.setText(call.text(0) + call.text(1));
  call.setNumber(call.number(0) + call.number(1));
}

void divide(const FunctionCall& call) {
  const double divisor = call.number(1);
  if (divisor == 0) throw divisionByZero();
  call.setNumber(call.number(0) / divisor);
}

/// Both operands are rounded first.
void intDivide(const FunctionCall& call) {
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) throw divisionByZero();
  call.setWhole(call.whole(0) / divisor);
}

void modulo(const FunctionCall& call) {
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) throw divisionByZero();
  call.setWhole(call.whole(0) % divisor);
}

void power(const FunctionCall& call) {
  const double result = std::pow(call.number(0), call.number(1));
  if (std::isnan(result)) throw error::invalidCall();
  call.setNumber(result);
}

/// Whole numbers stay whole.
void setRounded(const FunctionCall& call, double result) {
  if (sqlite3_value_type(call.raw(0)) == SQLITE_INTEGER && std::fabs(result) < 9.0e15) {
    return call.setWhole(static_cast<std::int64_t>(result));
  }
  call.setNumber(result);
}

template <double (*calculate)(double)>
void rounding(const FunctionCall& call) {
  setRounded(call, calculate(call.number(0)));
}

double absolute(double number) {
  return std::fabs(number);
}
double downward(double number) {
  return std::floor(number);
}
double towardsZero(double number) {
  return std::trunc(number);
}

void round(const FunctionCall& call) {
  const std::int32_t places = call.count() > 1 ? call.whole(1) : 0;
  if (places < 0) throw error::invalidCall();
  if (places > 15) return setRounded(call, call.number(0));
  const double scale = std::pow(10.0, places);
  setRounded(call, std::nearbyint(call.number(0) * scale) / scale);
}

void sign(const FunctionCall& call) {
  const double number = call.number(0);
  call.setWhole(number > 0 ? 1 : (number < 0 ? -1 : 0));
}

void squareRoot(const FunctionCall& call) {
  if (call.number(0) < 0) throw error::invalidCall();
  call.setNumber(std::sqrt(call.number(0)));
}

void exponential(const FunctionCall& call) {
  call.setNumber(std::exp(call.number(0)));
}

void logarithm(const FunctionCall& call) {
  if (call.number(0) <= 0) throw error::invalidCall();
  call.setNumber(std::log(call.number(0)));
}

constexpr SqlFunction kFunctions[] = {
    {"jet_plus", plus},
    {"jet_divide", divide},
    {"jet_intdivide", intDivide},
    {"jet_modulo", modulo},
    {"jet_power", power},
    {"jet_abs", rounding<absolute>},
    {"jet_int", rounding<downward>},
    {"jet_fix", rounding<towardsZero>},
    {"jet_round", round},
    {"jet_sgn", sign},
    {"jet_sqr", squareRoot},
    {"jet_exp", exponential},
    {"jet_log", logarithm},
};

}  // namespace

std::span<const SqlFunction> numberFunctions() {
  return kFunctions;
}

}  // namespace jetsql
