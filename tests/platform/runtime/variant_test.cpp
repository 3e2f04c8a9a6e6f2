#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>

#include "support/FileFaults.h"

using namespace runtime;

TEST(Variant, ValuesBecomeTextAsThePlatformWritesThem) {
  EXPECT_EQ(Variant(std::int32_t{-2147483630}).toText(), u"-2147483630");
  EXPECT_EQ(Variant(0.1 + 0.2).toText(), u"0.3");
  EXPECT_EQ(Variant(12.50).toText(), u"12.5");
  EXPECT_EQ(Variant(-0.0).toText(), u"0");
  EXPECT_EQ(Variant(1e15).toText(), u"1E+15");
  EXPECT_EQ(Variant(2.3f).toText(), u"2.3");
  EXPECT_EQ(Variant(true).toText(), u"True");
  EXPECT_EQ(Variant(Currency{-12'500}).toText(), u"-1.25");
  EXPECT_EQ(Variant(Currency{30'000}).toText(), u"3");
  EXPECT_EQ(Variant(Currency{INT64_MIN}).toText(), u"-922337203685477.5808");
  EXPECT_EQ(Variant(Guid{{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}}).toText(),
            u"{01234567-89AB-CDEF-0000-000000000000}");
}

TEST(Variant, DatesNearDayZeroAreCorrectAndInvalidOnesBecomeNumbers) {
  EXPECT_EQ(Variant(Date{0}).toText(), u"1899-12-30 00:00:00");
  EXPECT_EQ(Variant(Date{-1.25}).toText(), u"1899-12-29 06:00:00");
  EXPECT_EQ(Variant(Date{36585.999999999}).toText(), u"2000-03-01 00:00:00");
  EXPECT_EQ(Variant(Date{-657434}).toText(), u"0100-01-01 00:00:00");
  EXPECT_EQ(Variant(Date{1e300}).toText(), u"1E+300");
}

TEST(Variant, NullJoinsAsEmptyAndFailsElsewhere) {
  EXPECT_EQ(Variant() & u"", u"");
  EXPECT_EQ(Variant(u"Tea") & u"!", u"Tea!");
  using support::errorNumberOf;
  EXPECT_EQ(errorNumberOf([] { Variant().toText(); }), 94);
  EXPECT_EQ(errorNumberOf([] { Variant().toLong(); }), 94);
  EXPECT_EQ(errorNumberOf([] { Variant(u"abc").toLong(); }), 13);
  EXPECT_EQ(errorNumberOf([] { Variant(3e9).toLong(); }), 6);
  EXPECT_EQ(errorNumberOf([] { Variant(Binary{1}).toText(); }), 13);
  EXPECT_EQ(Variant(Currency{25'000}).toLong(), 2);
  EXPECT_EQ(Variant(true).toLong(), -1);
}
