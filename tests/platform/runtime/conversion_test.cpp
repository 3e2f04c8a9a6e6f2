#include "platform/runtime/Conversion.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>

#include "platform/runtime/Integer16.h"
#include "platform/runtime/RunTimeError.h"
#include "support/ReferenceTable.h"

using runtime::Integer16;
using runtime::leadingNumber;
using runtime::RunTimeError;
using runtime::toInteger;
using runtime::toLong;

namespace {

/// The result as a table writes it: the number, or the name of the error.
template <class Convert>
std::string outcome(const Convert& convert) {
  try {
    return std::to_string(convert());
  } catch (const RunTimeError& error) {
    if (error.number() == 6) return "overflow";
    if (error.number() == 13) return "type mismatch";
    return error.what();
  }
}

std::string expected(const QJsonObject& row, const char* name) {
  const QJsonValue value = row[QLatin1String(name)];
  return value.isString() ? value.toString().toStdString() : std::to_string(value.toInt());
}

}  // namespace

TEST(Conversion, TextsBecomeIntegersAsTheTableSays) {
  const auto rows = support::referenceRows("number-cases.json");
  for (const QJsonObject& row : rows) {
    SCOPED_TRACE(support::idOf(row));
    const std::u16string text = support::wideField(row, "text");
    EXPECT_EQ(outcome([&] { return toInteger(text); }), expected(row, "int16"));
    EXPECT_EQ(outcome([&] { return toLong(text); }), expected(row, "int32"));
  }
}

TEST(Conversion, DoublesRoundHalfToEvenAsTheTableSays) {
  const auto rows = support::referenceRows("round-cases.json");
  for (const QJsonObject& row : rows) {
    SCOPED_TRACE(support::idOf(row));
    const auto number =
        std::bit_cast<double>(std::uint64_t{row["input_bits"].toString().toULongLong(nullptr, 16)});
    EXPECT_EQ(outcome([&] { return toInteger(number); }), expected(row, "int16"));
  }
}

TEST(Conversion, LeadingNumbersAreAsTheTableSays) {
  const auto rows = support::referenceRows("val-cases.json");
  for (const QJsonObject& row : rows)
    EXPECT_EQ(leadingNumber(support::wideField(row, "text")), row["value"].toDouble())
        << support::idOf(row);
}

TEST(Conversion, ExtremeAndMalformedNumbersConvertOrRaiseAnError) {
  const std::u16string nines(100'000, u'9');
  EXPECT_EQ(outcome([&] { return toLong(nines); }), "overflow");
  EXPECT_EQ(outcome([&] { return toLong(u"1e" + nines); }), "overflow");
  EXPECT_EQ(outcome([&] { return toLong(u"1e-" + nines); }), "0");
  EXPECT_EQ(outcome([&] { return toLong(u"0." + std::u16string(500, u'0') + u"1e501"); }), "1");
  EXPECT_EQ(outcome([] {
              return toLong(
                  std::u16string_view(u"7\0"
                                      u"7",
                                      3));
            }),
            "type mismatch");
  EXPECT_EQ(outcome([] { return toLong(u"."); }), "type mismatch");
  EXPECT_EQ(outcome([] { return toLong(u"(5"); }), "type mismatch");
  EXPECT_THROW(leadingNumber(u"1e400"), RunTimeError);
  EXPECT_EQ(leadingNumber(u"1e-400"), 0.0);
  EXPECT_EQ(outcome([] { return toLong(2147483647.5); }), "overflow");
}

TEST(Integer16, OverflowRaisesErrorSixAndLeavesTheOperand) {
  Integer16 left = 31050;
  EXPECT_EQ(outcome([&] { return (left = left + 1350 + 1350); }), "overflow");
  EXPECT_EQ(left, 31050);
  Integer16 top = -32400;
  EXPECT_EQ(outcome([&] { return (top = top - 1080); }), "overflow");
  EXPECT_EQ(top - 368, -32768);
  EXPECT_EQ(outcome([] { return toInteger(std::int32_t{32768}); }), "overflow");
}
