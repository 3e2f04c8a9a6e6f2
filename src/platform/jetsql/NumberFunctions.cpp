#include <cmath>

#include "platform/jetsql/Error.h"
#include "platform/jetsql/SqlFunction.h"

namespace jetsql {
namespace {

runtime::RunTimeError divisionByZero() {
  return error::statement(u"Division by zero");
}

/// `+` where only the rows tell whether texts join or numbers add.
void plus(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (call.isText(0) && call.isText(1)) return call.giveText(call.text(0) + call.text(1));
  call.giveNumber(call.number(0) + call.number(1));
}

void divide(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double divisor = call.number(1);
  if (divisor == 0) throw divisionByZero();
  call.giveNumber(call.number(0) / divisor);
}

/// Both operands are rounded first.
void intDivide(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) throw divisionByZero();
  call.giveWhole(call.whole(0) / divisor);
}

void modulo(const FunctionCall& call) {
  if (call.hasNull()) return;
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) throw divisionByZero();
  call.giveWhole(call.whole(0) % divisor);
}

void power(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double result = std::pow(call.number(0), call.number(1));
  if (std::isnan(result)) throw error::invalidCall();
  call.giveNumber(result);
}

/// Whole numbers stay whole.
void give(const FunctionCall& call, double result) {
  if (sqlite3_value_type(call.raw(0)) == SQLITE_INTEGER && std::fabs(result) < 9.0e15) {
    return call.giveWhole(static_cast<std::int64_t>(result));
  }
  call.giveNumber(result);
}

template <double (*calculate)(double)>
void rounding(const FunctionCall& call) {
  if (call.hasNull()) return;
  give(call, calculate(call.number(0)));
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
  if (call.hasNull()) return;
  const std::int32_t places = call.count() > 1 ? call.whole(1) : 0;
  if (places < 0) throw error::invalidCall();
  if (places > 15) return give(call, call.number(0));
  const double scale = std::pow(10.0, places);
  give(call, std::nearbyint(call.number(0) * scale) / scale);
}

void sign(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double number = call.number(0);
  call.giveWhole(number > 0 ? 1 : (number < 0 ? -1 : 0));
}

void squareRoot(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (call.number(0) < 0) throw error::invalidCall();
  call.giveNumber(std::sqrt(call.number(0)));
}

void exponential(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveNumber(std::exp(call.number(0)));
}

void logarithm(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (call.number(0) <= 0) throw error::invalidCall();
  call.giveNumber(std::log(call.number(0)));
}

constexpr SqlFunction kFunctions[] = {
    {"jet_plus", plus, nullptr},
    {"jet_divide", divide, nullptr},
    {"jet_intdivide", intDivide, nullptr},
    {"jet_modulo", modulo, nullptr},
    {"jet_power", power, nullptr},
    {"jet_abs", rounding<absolute>, nullptr},
    {"jet_int", rounding<downward>, nullptr},
    {"jet_fix", rounding<towardsZero>, nullptr},
    {"jet_round", round, nullptr},
    {"jet_sgn", sign, nullptr},
    {"jet_sqr", squareRoot, nullptr},
    {"jet_exp", exponential, nullptr},
    {"jet_log", logarithm, nullptr},
};

}  // namespace

std::span<const SqlFunction> numberFunctions() {
  return kFunctions;
}

}  // namespace jetsql
