#include "platform/jetsql/functions/Function.h"

#include <algorithm>
#include <array>

#include "platform/jetsql/syntax/Token.h"

namespace jetsql {
namespace {

using W = Function::Writing;
constexpr auto kFixed = Function::Result::Fixed;
constexpr auto kAsFirst = Function::Result::AsFirst;
constexpr int kMany = 100;

constexpr std::array kFunctions = std::to_array<Function>({
    // Choice and nulls.
    {u"IIF", 3, 3, W::Choice, "v", Type::Any, kFixed, ""},
    {u"SWITCH", 2, kMany, W::Switch, "v", Type::Any, kFixed, ""},
    {u"CHOOSE", 2, kMany, W::Choose, "v", Type::Any, kFixed, ""},
    {u"NZ", 1, 2, W::Fallback, "v", Type::Any, kFixed, ""},
    {u"ISNULL", 1, 1, W::NullTest, "v", Type::Boolean, kFixed, ""},
    {u"ISNUMERIC", 1, 1, W::Plain, "v", Type::Boolean, kFixed, "jet_isnumeric"},
    {u"ISDATE", 1, 1, W::Plain, "v", Type::Boolean, kFixed, "jet_isdate"},
    // Text.
    {u"LEN", 1, 1, W::Plain, "t", Type::Long, kFixed, "jet_len"},
    {u"LEFT", 2, 2, W::Plain, "tn", Type::Text, kFixed, "jet_left"},
    {u"RIGHT", 2, 2, W::Plain, "tn", Type::Text, kFixed, "jet_right"},
    {u"MID", 2, 3, W::Plain, "tn", Type::Text, kFixed, "jet_mid"},
    {u"INSTR", 2, 4, W::InText, "t", Type::Long, kFixed, "jet_instr"},
    {u"UCASE", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_ucase"},
    {u"LCASE", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_lcase"},
    {u"TRIM", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_trim"},
    {u"LTRIM", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_ltrim"},
    {u"RTRIM", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_rtrim"},
    {u"SPACE", 1, 1, W::Plain, "n", Type::Text, kFixed, "jet_space"},
    {u"STRING", 2, 2, W::Plain, "nv", Type::Text, kFixed, "jet_string"},
    {u"STRCOMP", 2, 3, W::Plain, "ttn", Type::Integer, kFixed, "jet_strcomp"},
    {u"ASC", 1, 1, W::Plain, "t", Type::Integer, kFixed, "jet_asc"},
    {u"CHR", 1, 1, W::Plain, "n", Type::Text, kFixed, "jet_chr"},
    // Conversions.
    {u"STR", 1, 1, W::Plain, "n", Type::Text, kFixed, "jet_str"},
    {u"VAL", 1, 1, W::Plain, "t", Type::Double, kFixed, "jet_val"},
    {u"CSTR", 1, 1, W::Plain, "t", Type::Text, kFixed, "jet_cstr"},
    {u"CBOOL", 1, 1, W::Plain, "v", Type::Boolean, kFixed, "jet_cbool"},
    {u"CBYTE", 1, 1, W::Plain, "v", Type::Byte, kFixed, "jet_cbyte"},
    {u"CINT", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_cint"},
    {u"CLNG", 1, 1, W::Plain, "v", Type::Long, kFixed, "jet_clng"},
    {u"CSNG", 1, 1, W::Plain, "v", Type::Single, kFixed, "jet_csng"},
    {u"CDBL", 1, 1, W::Plain, "v", Type::Double, kFixed, "jet_cdbl"},
    {u"CCUR", 1, 1, W::Plain, "v", Type::Currency, kFixed, "jet_ccur"},
    {u"CDATE", 1, 1, W::Plain, "v", Type::Date, kFixed, "jet_cdate"},
    {u"CVDATE", 1, 1, W::Plain, "v", Type::Date, kFixed, "jet_cdate"},
    {u"FORMAT", 1, 2, W::Plain, "vt", Type::Text, kFixed, "jet_format"},
    // Numbers.
    {u"ABS", 1, 1, W::Plain, "n", Type::Double, kAsFirst, "jet_abs"},
    {u"INT", 1, 1, W::Plain, "n", Type::Double, kAsFirst, "jet_int"},
    {u"FIX", 1, 1, W::Plain, "n", Type::Double, kAsFirst, "jet_fix"},
    {u"ROUND", 1, 2, W::Plain, "n", Type::Double, kAsFirst, "jet_round"},
    {u"SGN", 1, 1, W::Plain, "n", Type::Integer, kFixed, "jet_sgn"},
    {u"SQR", 1, 1, W::Plain, "n", Type::Double, kFixed, "jet_sqr"},
    {u"EXP", 1, 1, W::Plain, "n", Type::Double, kFixed, "jet_exp"},
    {u"LOG", 1, 1, W::Plain, "n", Type::Double, kFixed, "jet_log"},
    // Dates.
    {u"DATE", 0, 0, W::Moment, "v", Type::Date, kFixed, ""},
    {u"TIME", 0, 0, W::Moment, "v", Type::Date, kFixed, ""},
    {u"NOW", 0, 0, W::Moment, "v", Type::Date, kFixed, ""},
    {u"YEAR", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_year"},
    {u"MONTH", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_month"},
    {u"DAY", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_day"},
    {u"HOUR", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_hour"},
    {u"MINUTE", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_minute"},
    {u"SECOND", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_second"},
    {u"WEEKDAY", 1, 1, W::Plain, "v", Type::Integer, kFixed, "jet_weekday"},
    {u"DATEADD", 3, 3, W::Plain, "tnv", Type::Date, kFixed, "jet_dateadd"},
    {u"DATEDIFF", 3, 3, W::Plain, "tv", Type::Long, kFixed, "jet_datediff"},
    {u"DATEPART", 2, 2, W::Plain, "tv", Type::Integer, kFixed, "jet_datepart"},
    {u"DATESERIAL", 3, 3, W::Plain, "n", Type::Date, kFixed, "jet_dateserial"},
    {u"TIMESERIAL", 3, 3, W::Plain, "n", Type::Date, kFixed, "jet_timeserial"},
    // Over many rows.
    {u"COUNT", 1, 1, W::Aggregate, "v", Type::Long, kFixed, "count"},
    {u"SUM", 1, 1, W::Sum, "n", Type::Double, kFixed, "sum"},
    {u"AVG", 1, 1, W::Sum, "n", Type::Double, kFixed, "avg"},
    {u"MIN", 1, 1, W::Aggregate, "c", Type::Any, kAsFirst, "min"},
    {u"MAX", 1, 1, W::Aggregate, "c", Type::Any, kAsFirst, "max"},
    {u"FIRST", 1, 1, W::Aggregate, "k", Type::Any, kAsFirst, "jet_first"},
    {u"LAST", 1, 1, W::Aggregate, "k", Type::Any, kAsFirst, "jet_last"},
    {u"STDEV", 1, 1, W::Aggregate, "n", Type::Double, kFixed, "jet_stdev"},
    {u"STDEVP", 1, 1, W::Aggregate, "n", Type::Double, kFixed, "jet_stdevp"},
    {u"VAR", 1, 1, W::Aggregate, "n", Type::Double, kFixed, "jet_var"},
    {u"VARP", 1, 1, W::Aggregate, "n", Type::Double, kFixed, "jet_varp"},
});

}  // namespace

const Function* functionNamed(std::u16string_view name) {
  if (name.ends_with(u'$')) name.remove_suffix(1);
  const auto found = std::ranges::find_if(
      kFunctions, [&](const Function& each) { return sameWord(each.name, name); });
  return found == kFunctions.end() ? nullptr : &*found;
}

}  // namespace jetsql
