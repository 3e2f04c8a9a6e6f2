#include <cmath>
#include <limits>

#include "platform/jetsql/DateText.h"
#include "platform/jetsql/Error.h"
#include "platform/jetsql/Format.h"
#include "platform/jetsql/SqlFunction.h"
#include "platform/jetsql/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

/// A number that stands in a calculation; null stays null.
void number(const FunctionCall& call) {
  if (call.hasNull()) return;
  if (!call.isText(0)) return call.giveSame(call.raw(0));
  call.giveNumber(call.number(0));
}

/// An amount to whole ten-thousandths, rounded half to even.
std::int64_t tenThousandths(double amount) {
  const double scaled = std::nearbyint(amount * runtime::Currency::kOne);
  if (!(std::fabs(scaled) < 9.2233720368547e18)) throw error::overflow();
  return static_cast<std::int64_t>(scaled);
}

void exactCurrency(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveWhole(tenThousandths(call.number(0)));
}

void exactDecimal(const FunctionCall& call) {
  if (call.hasNull()) return;
  call.giveText(call.text(0));
}

template <int low, int high>
void toWhole(const FunctionCall& call) {
  const double rounded = std::nearbyint(call.number(0));
  if (!(rounded >= low) || !(rounded <= high)) throw error::overflow();
  call.giveWhole(static_cast<std::int64_t>(rounded));
}

void toSingle(const FunctionCall& call) {
  const double wide = call.number(0);
  const auto narrow = static_cast<float>(wide);
  if (!std::isfinite(narrow)) throw error::overflow();
  call.giveNumber(narrow);
}

void toDouble(const FunctionCall& call) {
  call.giveNumber(call.number(0));
}

void toCurrency(const FunctionCall& call) {
  call.giveNumber(runtime::Currency{tenThousandths(call.number(0))}.toDouble());
}

void toBoolean(const FunctionCall& call) {
  if (call.isText(0)) {
    const std::u16string text = call.text(0);
    if (sameWord(text, u"TRUE")) return call.giveBoolean(true);
    if (sameWord(text, u"FALSE")) return call.giveBoolean(false);
  }
  call.giveBoolean(call.number(0) != 0);
}

void toDate(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  const double days = call.date(0);
  civilFromDays(days);
  call.giveNumber(days);
}

void toText(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  call.giveText(call.text(0));
}

/// A number as text with room for its sign in front.
void str(const FunctionCall& call) {
  if (call.hasNull()) return;
  const double value = call.number(0);
  call.giveText((value < 0 ? u"" : u" ") + call.text(0));
}

void val(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  try {
    call.giveNumber(runtime::leadingNumber(call.text(0)));
  } catch (const runtime::RunTimeError&) {
    throw error::overflow();
  }
}

void isNumeric(const FunctionCall& call) {
  if (call.isNull(0) || call.isBytes(0)) return call.giveBoolean(false);
  bool isNumber = true;
  try {
    (void)call.number(0);
  } catch (const runtime::RunTimeError&) {
    isNumber = false;
  }
  call.giveBoolean(isNumber);
}

void isDate(const FunctionCall& call) {
  call.giveBoolean(call.isText(0) && parseDate(call.text(0)).has_value());
}

/// A text that is no number or date is given back as it is.
void format(const FunctionCall& call) {
  const std::u16string pattern = call.count() > 1 ? call.text(1) : std::u16string();
  if (call.isNull(0)) return call.giveText(formatNull(pattern));
  if (call.count() < 2) return call.giveText(call.text(0));
  double value = 0;
  try {
    value = isDatePattern(pattern) ? call.date(0) : call.number(0);
  } catch (const runtime::RunTimeError&) {
    return call.giveText(call.text(0));
  }
  call.giveText(isDatePattern(pattern) ? formatDate(value, pattern) : formatNumber(value, pattern));
}

constexpr SqlFunction kFunctions[] = {
    {"jet_number", number, nullptr},
    {"jet_exact_currency", exactCurrency, nullptr},
    {"jet_exact_decimal", exactDecimal, nullptr},
    {"jet_cstr", toText, nullptr},
    {"jet_cbool", toBoolean, nullptr},
    {"jet_cbyte", toWhole<0, 255>, nullptr},
    {"jet_cint", toWhole<-32768, 32767>, nullptr},
    {"jet_clng", toWhole<std::numeric_limits<int>::min(), std::numeric_limits<int>::max()>,
     nullptr},
    {"jet_csng", toSingle, nullptr},
    {"jet_cdbl", toDouble, nullptr},
    {"jet_ccur", toCurrency, nullptr},
    {"jet_cdate", toDate, nullptr},
    {"jet_str", str, nullptr},
    {"jet_val", val, nullptr},
    {"jet_isnumeric", isNumeric, nullptr},
    {"jet_isdate", isDate, nullptr},
    {"jet_format", format, nullptr},
};

}  // namespace

std::span<const SqlFunction> conversionFunctions() {
  return kFunctions;
}

}  // namespace jetsql
