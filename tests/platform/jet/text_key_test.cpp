#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/jet/format/IndexKey.h"
#include "platform/jet/format/TextKey.h"

namespace {

using jet::TextOrder;

std::string hex(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    text.push_back("0123456789abcdef"[static_cast<std::uint8_t>(c) >> 4]);
    text.push_back("0123456789abcdef"[c & 15]);
  }
  return text;
}

TEST(TextKey, HasTheBytesThatTheFormatsOwnEngineWrites) {
  const auto key4 = [](std::u16string_view text) {
    return hex(jet::textKey(TextOrder::General4, text));
  };
  EXPECT_EQ(key4(u""), "0100");
  EXPECT_EQ(key4(u"Abc  "), "4a4c4d0100");
  EXPECT_EQ(key4(u"é"), "51010e00");
  EXPECT_EQ(key4(u"caf\u00e9s"),
            "4d4a5351"
            "6b"
            "01"
            "0202020e"
            "00");
  EXPECT_EQ(key4(u"co-op"),
            "4d646466"
            "01"
            "010101"
            "800f0682"
            "00");
  EXPECT_EQ(key4(u"\u00e9'x"),
            "5175"
            "01"
            "0e"
            "010101"
            "800b0680"
            "00");
  EXPECT_EQ(key4(u"hei\u00df"), "5751596b6b0100");
  const auto key3 = [](std::u16string_view text) {
    return hex(jet::textKey(TextOrder::General3, text));
  };
  EXPECT_EQ(key3(u""), "00");
  EXPECT_EQ(key3(u"Milk 2"), "6f6a6d6c115800");
  EXPECT_EQ(key3(u"\u00e9"), "660400");
  EXPECT_EQ(key3(u"\u00df\u00e9"), "767666022400");  // two letters, then an accent
  const std::u16string longest(255, u'a');
  EXPECT_EQ(key4(longest + u'b'), key4(longest));
}

TEST(TextKey, IsTheSameFromBytesAndFromWideText) {
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i) {
    std::vector<std::uint8_t> bytes(random() % 40);
    std::u16string latin;
    for (std::uint8_t& byte : bytes) {
      byte = static_cast<std::uint8_t>(1 + random() % 255);
      latin.push_back(byte);
    }
    std::string fromBytes;
    EXPECT_TRUE(jet::appendByteTextKey(TextOrder::General4, bytes, fromBytes));
    EXPECT_EQ(fromBytes, jet::textKey(TextOrder::General4, latin));
  }
  // The byte 0x80 is the euro sign in a Jet 3 file.
  std::string euro;
  jet::appendByteTextKey(TextOrder::General3, std::vector<std::uint8_t>{0x80}, euro);
  EXPECT_EQ(euro, jet::textKey(TextOrder::General3, u"\u20ac"));
}

TEST(TextKey, RefusesCharactersOutsideTheTablesForIndexesOnly) {
  std::string key;
  EXPECT_FALSE(jet::appendTextKey(TextOrder::General4, u"a\u4e00", key));
  EXPECT_FALSE(
      jet::isKnownTextKey({reinterpret_cast<const std::uint8_t*>(key.data()), key.size()}));
  EXPECT_LT(jet::textKey(TextOrder::General4, u"az"), key);
  EXPECT_LT(key, jet::textKey(TextOrder::General4, u"a\u4e01"));
  jet::ColumnDefinition column;
  column.type = jet::ColumnType::Text;
  column.sortLanguage = 0x409;
  jet::Bytes entry;
  EXPECT_FALSE(jet::appendKey(jet::Version::Jet4, column, true, std::u16string(u"a\u4e00"), entry));
  EXPECT_TRUE(entry.empty());
  EXPECT_TRUE(jet::appendKey(jet::Version::Jet4, column, false, std::u16string(u"a"), entry));
  EXPECT_EQ(entry, (jet::Bytes{0x80, 0xB5, 0xFE, 0xFF, 0x00}));
}

TEST(TextKey, ComparesTextsAsTheirKeys) {
  constexpr std::u16string_view kUnits = u"abAB1 -'_\u00E9\u00C9\u00DF\u0153\u20AC\u0085\u4E2D";
  std::mt19937 random(17);
  const auto text = [&] {
    std::u16string made;
    for (auto length = random() % 6; length > 0; --length) made += kUnits[random() % kUnits.size()];
    return made;
  };
  const auto sign = [](int order) { return (order > 0) - (order < 0); };
  for (const TextOrder order : {TextOrder::General3, TextOrder::General4})
    for (int i = 0; i < 20'000; ++i) {
      const std::u16string a = text();
      const std::u16string b = text();
      ASSERT_EQ(sign(jet::compareText(order, a, b)),
                sign(jet::textKey(order, a).compare(jet::textKey(order, b))))
          << testing::PrintToString(a) << testing::PrintToString(b);
    }
}

}  // namespace
