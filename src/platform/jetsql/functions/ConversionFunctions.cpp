#include "platform/jetsql/functions/ConversionFunctions.h"

#include <cmath>
#include <cstdint>

#include "platform/jetsql/functions/Format.h"
#include "platform/jetsql/functions/FunctionCall.h"
#include "platform/jetsql/syntax/DateText.h"
#include "platform/jetsql/syntax/StatementError.h"
#include "platform/jetsql/syntax/Token.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Rounding.h"
#include "platform/runtime/Variant.h"

namespace jetsql {
namespace {

/// An operand of a calculation as a number; null stays null.
void number(const FunctionCall& call) {
  if (!call.isText(0)) return call.setValue(call.raw(0));
  call.setNumber(call.number(0));
}

void toTenThousandths(const FunctionCall& call) {
  call.setInteger(tenThousandths(call.number(0)));
}

template <class Integer>
void toInteger(const FunctionCall& call) {
  call.setInteger(runtime::rounded<Integer>(call.number(0), error::overflow));
}

void toSingle(const FunctionCall& call) {
  const double wide = call.number(0);
  const auto narrow = static_cast<float>(wide);
  if (!std::isfinite(narrow)) throw error::overflow();
  call.setNumber(narrow);
}

void toDouble(const FunctionCall& call) {
  call.setNumber(call.number(0));
}

void toCurrency(const FunctionCall& call) {
  call.setNumber(runtime::Currency{tenThousandths(call.number(0))}.toDouble());
}

void toBoolean(const FunctionCall& call) {
  if (call.isText(0)) {
    const std::u16string text = call.text(0);
    if (sameWord(text, u"TRUE")) return call.setBoolean(true);
    if (sameWord(text, u"FALSE")) return call.setBoolean(false);
  }
  call.setBoolean(call.number(0) != 0);
}

void toDate(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  const double days = call.date(0);
  civilFromDays(days);
  call.setNumber(days);
}

void toText(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  call.setText(call.text(0));
}

/// A number as text, with a blank or its sign before it.
void str(const FunctionCall& call) {
  const double value = call.number(0);
  call.setText((value < 0 ? u"" : u" ") + call.text(0));
}

void val(const FunctionCall& call) {
  if (call.isNull(0)) throw error::invalidNull();
  try {
    call.setNumber(runtime::leadingNumber(call.text(0)));
  } catch (const runtime::RunTimeError&) {
    throw error::overflow();
  }
}

void isNumeric(const FunctionCall& call) {
  if (call.isNull(0) || call.isBytes(0)) return call.setBoolean(false);
  bool isNumber = true;
  try {
    (void)call.number(0);
  } catch (const runtime::RunTimeError&) {
    isNumber = false;
  }
  call.setBoolean(isNumber);
}

void isDate(const FunctionCall& call) {
  call.setBoolean(call.isText(0) && parseDate(call.text(0)).has_value());
}

/// A text that is no number or date stays as it is.
void format(const FunctionCall& call) {
  const Format pattern(call.count() > 1 ? call.text(1) : std::u16string());
  if (call.isNull(0)) return call.setText(pattern.null());
  if (call.count() < 2) return call.setText(call.text(0));
  double value = 0;
  try {
    value = pattern.isDate() ? call.date(0) : call.number(0);
  } catch (const runtime::RunTimeError&) {
    return call.setText(call.text(0));
  }
  call.setText(pattern.isDate() ? pattern.date(value) : pattern.number(value));
}

constexpr Function kFunctions[] = {
    {u"CSTR", 1, 1, "t", Type::Text, "jet_cstr", toText, kSeen},
    {u"CBOOL", 1, 1, "v", Type::Boolean, "jet_cbool", toBoolean, kSeen},
    {u"CBYTE", 1, 1, "v", Type::Byte, "jet_cbyte", toInteger<std::uint8_t>, kSeen},
    {u"CINT", 1, 1, "v", Type::Integer, "jet_cint", toInteger<std::int16_t>, kSeen},
    {u"CLNG", 1, 1, "v", Type::Long, "jet_clng", toInteger<std::int32_t>, kSeen},
    {u"CSNG", 1, 1, "v", Type::Single, "jet_csng", toSingle, kSeen},
    {u"CDBL", 1, 1, "v", Type::Double, "jet_cdbl", toDouble, kSeen},
    {u"CCUR", 1, 1, "v", Type::Currency, "jet_ccur", toCurrency, kSeen},
    {u"CDATE", 1, 1, "v", Type::Date, "jet_cdate", toDate, kSeen},
    {u"CVDATE", 1, 1, "v", Type::Date, "jet_cdate", toDate, kSeen},
    {u"STR", 1, 1, "n", Type::Text, "jet_str", str},
    {u"VAL", 1, 1, "t", Type::Double, "jet_val", val, kSeen},
    {u"ISNUMERIC", 1, 1, "v", Type::Boolean, "jet_isnumeric", isNumeric, kSeen},
    {u"ISDATE", 1, 1, "v", Type::Boolean, "jet_isdate", isDate, kSeen},
    {u"FORMAT", 1, 2, "vt", Type::Text, "jet_format", format, kSeen},
    // What operators need.
    helperFunction("jet_number", number),
    helperFunction("jet_ten_thousandths", toTenThousandths),
};

}  // namespace

std::int64_t tenThousandths(double amount) {
  const double scaled = std::nearbyint(amount * runtime::Currency::kOne);
  if (!(std::fabs(scaled) < 9.2233720368547e18)) throw error::overflow();
  return static_cast<std::int64_t>(scaled);
}

std::span<const Function> conversionFunctions() {
  return kFunctions;
}

}  // namespace jetsql
