#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SmallStore.h"

namespace jetsqltest {
namespace {

/// An expression and its value.
struct Case {
  const char16_t* expression;
  const char* value;
};

void check(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    const std::u16string statement = u"SELECT " + std::u16string(each.expression) + u" AS x";
    const std::string failure = littleShop().failure(statement);
    ASSERT_EQ(failure, "") << narrow(each.expression);
    EXPECT_EQ(littleShop().rows(statement), std::vector<std::string>{each.value})
        << narrow(each.expression);
  }
}

TEST(Expression, CalculatesByTheDialectsPrecedence) {
  check({{u"1+2*3", "7"},          {u"(1+2)*3", "9"},
         {u"-2^2", "-4.0"},        {u"2^-1", "0.5"},
         {u"2^3^2", "64.0"},       {u"7\\2*2", "1"},
         {u"7.5\\2.5", "4"},       {u"-7\\2", "-3"},
         {u"10 Mod 4*2", "2"},     {u"7.5 Mod 5", "3"},
         {u"-7 Mod 3", "-1"},      {u"6/4", "1.5"},
         {u"6/3", "2.0"},          {u"1-2-3", "-4"},
         {u"10-4+1", "7"},         {u"\"a\" & 1+2 & \"b\"", "'a3b'"},
         {u"&H1F + &O17", "46"},   {u"&HFFFF", "-1"},
         {u"1.5e2", "150.0"},      {u"2147483648", "2147483648.0"},
         {u"\"5\"+3", "8.0"},      {u"\"5\"*\"2\"", "10.0"},
         {u"\"a\"+\"b\"", "'ab'"}, {u"-True", "1i"},
         {u"3--(2>1)", "2"},       {u"--True & \"x\"", "'-1x'"}});
  check({{u"CCur(1.1) - 1 - 0.1", "0.0"}});
}

TEST(Expression, LogicHasThreeValues) {
  check({{u"True", "yes"},           {u"Yes And On", "yes"},     {u"No Or Off", "no"},
         {u"Null And False", "no"},  {u"Null And True", "null"}, {u"Null Or True", "yes"},
         {u"Null Or False", "null"}, {u"Not Null", "null"},      {u"Not 5", "no"},
         {u"3 And 4", "yes"},        {u"True Xor True", "no"},   {u"True Xor Null", "null"},
         {u"5 Xor 0", "yes"},        {u"True Eqv 7", "yes"},     {u"False Eqv Null", "null"},
         {u"False Imp Null", "yes"}, {u"Null Imp True", "yes"},  {u"Null Imp False", "null"},
         {u"True Imp False", "no"},  {u"True + 1", "0"},         {u"Not 1 = 2", "yes"},
         {u"1 = 1 = -1", "yes"},     {u"Null = Null", "null"},   {u"Null Is Null", "yes"},
         {u"1 Is Not Null", "yes"},  {u"2 > 1 And 1 > 2", "no"}});
}

TEST(Expression, TextComparesByTheFilesOrder) {
  check({{u"'abc' = 'ABC'", "yes"},
         {u"'abc' = 'abc   '", "yes"},
         {u"'' = '   '", "yes"},
         {u"'\u00E9' = 'e'", "no"},
         {u"'\u00E9' = '\u00C9'", "yes"},
         {u"'e' < '\u00E9'", "yes"},
         {u"'\u00E9' < 'f'", "yes"},
         {u"'coop' < 'co-op'", "yes"},
         {u"'co-op' < 'coops'", "yes"},
         {u"'a_b' < 'a1b'", "yes"},
         {u"'\u00DF' = 'ss'", "yes"},
         {u"'b' Between 'C' And 'A'", "yes"},
         {u"'b' In ('x', 'B ')", "yes"},
         {u"IIf(True,1,'a') < IIf(True,'a',1)", "yes"},
         {u"IIf(True,'B',1) = IIf(True,'b',1)", "yes"}});
}

TEST(Expression, BetweenAndInTakeAllTheirForms) {
  check({{u"5 Between 1 And 9", "yes"},
         {u"5 Between 9 And 1", "yes"},
         {u"5 Between 1+0 And 4", "no"},
         {u"5 Not Between 6+0 And 9", "yes"},
         {u"5 Between Null And 9", "null"},
         {u"5 Between 9+Null And 1", "null"},
         {u"2 In (1, 2, 3)", "yes"},
         {u"2 Not In (1, 3)", "yes"},
         {u"2 In (1, Null)", "null"},
         {u"True In (-1)", "yes"}});
}

TEST(Expression, LikeHasItsOwnPatterns) {
  check({{u"'Milk 1L' Like 'milk*'", "yes"},
         {u"'Milk 1L' Like '*1?'", "yes"},
         {u"'Milk 1L' Like '*#l'", "yes"},
         {u"'Milk' Like 'm[a-j]lk'", "yes"},
         {u"'Milk' Like 'm[!a-j]lk'", "no"},
         {u"'Milk' Like 'M[xyi]lk'", "yes"},
         {u"'50%' Like '50%'", "yes"},
         {u"'500' Like '50%'", "no"},
         {u"'a*b' Like 'a[*]b'", "yes"},
         {u"'axb' Like 'a[*]b'", "no"},
         {u"'aXbXc' Like '*x*x*'", "yes"},
         {u"'abc' Like 'abc '", "no"},
         {u"'' Like '*'", "yes"},
         {u"Null Like '*'", "null"},
         {u"'abc' Not Like 'a*'", "no"},
         {u"123 Like '1*'", "yes"},
         {u"'abc' ALike 'a%'", "yes"},
         {u"'abc' ALike 'a_c'", "yes"},
         {u"'a*c' ALike 'a*c'", "yes"},
         {u"'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab' Like '*a*a*a*a*a*a*a*a*a*a*c'", "no"}});
}

TEST(Expression, ConcatenationAndPlusTreatNullDifferently) {
  check({{u"'a' & Null & 'b'", "'ab'"},
         {u"Null & Null", "''"},
         {u"'a' + Null", "null"},
         {u"1 & 2", "'12'"},
         {u"0.5 & ''", "'0.5'"},
         {u"1/3 & ''", "'0.333333333333333'"},
         {u"True & ''", "'-1'"},
         {u"#3/31/2004# & ''", "'3/31/2004'"},
         {u"#3/31/2004 13:05# & ''", "'3/31/2004 1:05:00 PM'"},
         {u"'say \"\"x' & \"it's\"", "'say \"\"xit's'"},
         {u"'it''s' & \"a \"\"b\"\"\"", "'it'sa \"b\"'"}});
}

TEST(Expression, TextFunctionsCountUnitsAndKeepNull) {
  check({{u"Len('abc')", "3"},
         {u"Len(Null)", "null"},
         {u"Len(1234)", "4"},
         {u"Left('abcdef', 2)", "'ab'"},
         {u"Left('abc', 9)", "'abc'"},
         {u"Right('abcdef', 2)", "'ef'"},
         {u"Mid('abcdef', 3)", "'cdef'"},
         {u"Mid('abcdef', 2, 3)", "'bcd'"},
         {u"Mid('abc', 4)", "''"},
         {u"Mid('abc', 99, 1)", "''"},
         {u"Left(Null, 2)", "null"},
         {u"Left$('abc', 1)", "'a'"},
         {u"Trim('  a b  ')", "'a b'"},
         {u"LTrim('  a ')", "'a '"},
         {u"RTrim('  a ')", "'  a'"},
         {u"UCase('cr\u00E8me')", "'CR\u00C8ME'"},
         {u"LCase('\u00C9A')", "'\u00E9a'"},
         {u"InStr('abcabc', 'C')", "3"},
         {u"InStr(4, 'abcabc', 'a')", "4"},
         {u"InStr('abc', 'x')", "0"},
         {u"Space(2) & String(3, 'xy')", "'  xxx'"},
         {u"Chr(65) & Asc('B')", "'A66'"},
         {u"StrComp('a', 'B')", "-1i"},
         {u"StrComp('a', 'B', 0)", "1i"}});
}

TEST(Expression, ChoicesEvaluateOneSideOnly) {
  check({{u"IIf(1=1, 'yes', 1/0)", "'yes'"},
         {u"IIf(Null, 1, 2)", "2"},
         {u"IIf(1, 1, 2.5)", "1.0"},
         {u"IIf(1=2, 'a', IIf(1=1, 'b', 'c'))", "'b'"},
         {u"IIf(IIf(1=2, 1=1, IIf(1=1, 1=1, 1=2)), 'a', 'b')", "'a'"},
         {u"Nz(Null, 'x')", "'x'"},
         {u"Nz('a', 'x')", "'a'"},
         {u"Nz(Null)", "''"},
         {u"IsNull(Null)", "yes"},
         {u"IsNull(0)", "no"},
         {u"Not IsNull(0)", "yes"},
         {u"Switch(1=2, 'a', 2=2, 'b')", "'b'"},
         {u"Switch(1=2, 'a')", "null"},
         {u"Choose(2, 'a', 'b')", "'b'"},
         {u"Choose(3, 'a', 'b')", "null"}});

  // A shop's query maps department numbers to names by nested IIf calls like these.
  std::u16string names = u"'none'";
  for (int i = 0; i < 45; ++i) names = u"IIf(1=2, 'never', " + names + u")";
  check({{names.c_str(), "'none'"}});
}

TEST(Expression, ConversionsRoundHalvesToEven) {
  check({{u"CInt(2.5)", "2i"},
         {u"CInt('3.5')", "4i"},
         {u"CLng(' 12 ')", "12"},
         {u"CDbl('1.25')", "1.25"},
         {u"CByte(255)", "255b"},
         {u"CCur(0.03125)", "$0.0312"},
         {u"CCur('2.5')", "$2.5"},
         {u"CStr(1.5)", "'1.5'"},
         {u"CBool('true')", "yes"},
         {u"CBool(3)", "yes"},
         {u"CDate('2004-03-31 10:15')", "@2004-03-31 10:15:00"},
         {u"Val('12.5abc')", "12.5"},
         {u"Val('1 2')", "12.0"},
         {u"Val('abc')", "0.0"},
         {u"Str(5)", "' 5'"},
         {u"Int(-2.5)", "-3.0"},
         {u"Fix(-2.5)", "-2.0"},
         {u"Int(7)", "7"},
         {u"Abs(-3)", "3"},
         {u"Round(2.5)", "2.0"},
         {u"Round(2.125, 2)", "2.12"},
         {u"Sgn(-0.5)", "-1i"},
         {u"Sqr(9)", "3.0"},
         {u"IsNumeric('12x')", "no"},
         {u"IsNumeric('1e3')", "yes"}});
}

TEST(Expression, FormatWritesNumbersByPattern) {
  check({{u"Format(1234.5, '0.00')", "'1234.50'"},
         {u"Format(1234567.891, '#,##0.00')", "'1,234,567.89'"},
         {u"Format(0.5, '#.##')", "'.5'"},
         {u"Format(5, '000')", "'005'"},
         {u"Format(-5, '0.0')", "'-5.0'"},
         {u"Format(-5, '0.0;(0.0)')", "'(5.0)'"},
         {u"Format(0, '0;-0;\"nil\"')", "'nil'"},
         {u"Format(Null, '0;0;0;\"none\"')", "'none'"},
         {u"Format(0.256, '0%')", "'26%'"},
         {u"Format(12345, '0.00E+00')", "'1.23E+04'"},
         {u"Format(2.5, '0')", "'3'"},
         {u"Format(9.999, '0.00')", "'10.00'"},
         {u"Format(1234567, '0,')", "'1235'"},
         {u"Format(5551234, '000-0000')", "'555-1234'"},
         {u"Format(3, '\\#0')", "'#3'"},
         {u"Format(1234.5, 'Standard')", "'1,234.50'"},
         {u"Format('abc', '0')", "'abc'"},
         {u"Format('12', '000')", "'012'"},
         {u"Format(#3/5/2004 14:07:09#, 'yyyy-mm-dd hh:nn:ss')", "'2004-03-05 14:07:09'"},
         {u"Format(#3/5/2004 14:07:09#, 'd mmm yy, h:mm AM/PM')", "'5 Mar 04, 2:07 PM'"}});
}

TEST(Expression, DatesAreMonthFirstAndNumbersOfDays) {
  check({{u"#3/31/2004#", "@2004-03-31 00:00:00"},
         {u"#31/3/2004#", "@2004-03-31 00:00:00"},
         {u"#2004-03-31 10:15:00#", "@2004-03-31 10:15:00"},
         {u"#10:15 PM#", "@1899-12-30 22:15:00"},
         {u"#1/1/29#", "@2029-01-01 00:00:00"},
         {u"#1/1/30#", "@1930-01-01 00:00:00"},
         {u"#3/31/2004# + 1.5", "@2004-04-01 12:00:00"},
         {u"#3/31/2004# - #3/1/2004#", "30.0"},
         {u"#3/31/2004# = 38077", "yes"},
         {u"Year(#3/31/2004#)", "2004i"},
         {u"Month('2004-03-31')", "3i"},
         {u"Day(#3/31/2004#)", "31i"},
         {u"Weekday(#3/31/2004#)", "4i"},
         {u"DateAdd('m', 1, #1/31/2004#)", "@2004-02-29 00:00:00"},
         {u"DateAdd('n', -1, #3/1/2004#)", "@2004-02-29 23:59:00"},
         {u"DateDiff('d', #2/28/2004#, #3/1/2004#)", "2"},
         {u"DateDiff('yyyy', #12/31/2003#, #1/1/2004#)", "1"},
         {u"DateDiff('ww', #3/27/2004#, #3/28/2004#)", "1"},
         {u"DatePart('q', #5/1/2004#)", "2i"},
         {u"DateSerial(2004, 14, 0)", "@2005-01-31 00:00:00"},
         {u"Int(Now()) = Date()", "yes"}});
}

}  // namespace
}  // namespace jetsqltest
