#include "platform/runtime/Text.h"

#include <gtest/gtest.h>

#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "support/FileFaults.h"
#include "support/ReferenceTable.h"

TEST(Text, LeftAndRightStopAtTheEndAndRejectNegativeLengths) {
  EXPECT_EQ(runtime::left(u"Tea", 30), u"Tea");
  EXPECT_EQ(runtime::right(u"1042", 2), u"42");
  EXPECT_EQ(runtime::right(u"1042", 0), u"");
  EXPECT_EQ(support::failureOf([] { runtime::right(u"", -130); }),
            "5: Invalid procedure call or argument");
  EXPECT_THROW(runtime::left(u"Tea", -1), runtime::RunTimeError);
}

TEST(Text, TrimDropsSpacesAlone) {
  EXPECT_EQ(runtime::trim(u"  a b\t "), u"a b\t");
  EXPECT_EQ(runtime::trim(u"   "), u"");
}

TEST(Text, NamesFoldAccentedLettersWhateverTheLocale) {
  EXPECT_EQ(runtime::foldCase(u"Grün ÿ š"), runtime::foldCase(u"GRÜN Ÿ Š"));
  EXPECT_NE(runtime::foldCase(u"CAFE"), runtime::foldCase(u"CAFÉ"));
}

TEST(CodePage, MatchesTheReferenceTable) {
  const auto rows = support::referenceRows("codepage-cases.json");
  for (const QJsonObject& row : rows) {
    SCOPED_TRACE(support::idOf(row));
    const std::u16string text = support::wideField(row, "text");
    const std::string bytes = support::bytesField(row, "bytes_hex");
    EXPECT_EQ(runtime::toCodePage(text), bytes);
    if (row["kind"].toString() == "both ways") {
      EXPECT_EQ(runtime::fromCodePage(bytes), text);
    }
  }
}

TEST(CodePage, EveryByteComesBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(runtime::toCodePage(runtime::fromCodePage(all)), all);
}

TEST(Utf8, ConvertsBothWaysAndReplacesMalformedText) {
  const std::u16string text = u"Café € 日 \U0001F600";
  EXPECT_EQ(runtime::toUtf8(text), "Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5 \xF0\x9F\x98\x80");
  EXPECT_EQ(runtime::fromUtf8(runtime::toUtf8(text)), text);
  // An overlong form, a lone continuation, a surrogate, a cut sequence.
  EXPECT_EQ(runtime::fromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");
  EXPECT_EQ(runtime::fromUtf8("a\x80z"), u"a\uFFFDz");
  EXPECT_EQ(runtime::fromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(runtime::fromUtf8("a\xE2\x82"), u"a\uFFFD\uFFFD");
  EXPECT_EQ(runtime::toUtf8(std::u16string(1, 0xD83D) + u"x"), "\xEF\xBF\xBDx");
}
