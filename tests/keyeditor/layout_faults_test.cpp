// Each layout file has one fault; each row of the table has the expected results in both editors.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Shop.h"

using support::caption;
using support::key;
using support::lineOf;
using support::Shop;
using support::shownColour;
using support::WindowDriver;

namespace {

constexpr int kFaulty = 29;
constexpr std::int32_t kNoColour = -1;  // the key keeps its default
constexpr std::int32_t kGood = 255;

struct Fault {
  const char* name;
  std::string line;       // line 30 of the file, for key 29; all other lines are valid
  std::string caption;    // its caption afterwards; empty where only the saved line is compared
  std::int32_t colour;    // its back colour
  int error;              // the large editor's error; 0 when the line is good
  std::string savedHead;  // index, id and caption of key 29 in the levelled editor's next save
};

const std::vector<Fault> kFaults{
    {"empty line", "", "Key 29", kNoColour, 9, "29,,,"},
    {"one field", "29", "Key 29", kNoColour, 9, "29,,,"},
    {"two fields", "29,77", "Key 29", kNoColour, 9, "29,,,"},
    {"three fields", "29,77,Tea", "Tea", kNoColour, 9, "29,,Tea,"},
    {"empty back colour", "29,77,Tea,,0", "Tea", kNoColour, 13, "29,,Tea,"},
    {"back colour no number", "29,77,Tea,green,0", "Tea", kNoColour, 13, "29,,Tea,"},
    {"back colour beyond 32 bits", "29,77,Tea,2147483648,0", "Tea", kNoColour, 6, "29,,Tea,"},
    {"four fields", "29,77,Tea,65280", "Tea", 65280, 9, "29,,Tea,"},
    {"caption with a comma", "29,77,Tea, green,65280,0", "Tea", kNoColour, 13, "29,,Tea,"},
    {"caption with a comma and a number", "29,77,Tea, 2,65280,0", "Tea", 2, 0, "29,77,Tea,2,"},
    {"blanks around id and colour", "29,  77 ,Tea, 65280 ,x", "Tea", 65280, 0, "29,77,Tea,65280,"},
    {"another index, a hundred fields", "5,77,Tea,65280,0" + std::string(95, ','), "Tea", 65280, 0,
     "29,77,Tea,65280,"},
    {"LF, NUL and 0x1A in the caption", std::string("29,77,T\n") + '\0' + "\x1a" + "ea,65280,0", "",
     65280, 0, ""},
};

std::string goodLine(int key) {
  return lineOf({.key = key, .product = "1", .caption = "Good", .back = kGood, .font = 0});
}

std::string fileWith(const std::string& line, int keys, const char* end = "\r\n") {
  std::string bytes;
  for (int i = 0; i < keys; ++i) bytes += (i == kFaulty ? line : goodLine(i)) + end;
  return bytes;
}

}  // namespace

TEST(LayoutFaults, TheLevelledEditorStopsSilentlyAndKeepsTheFieldsBeforeTheFault) {
  for (const Fault& fault : kFaults) {
    SCOPED_TRACE(fault.name);
    Shop shop;
    shop.folder.write("Posdata/FastMovers1.txt", fileWith(fault.line, 63));
    WindowDriver user = shop.open();
    ASSERT_EQ(shop.failure(), 0);
    EXPECT_EQ(caption(user, key(28)), "Good");
    EXPECT_EQ(caption(user, key(30)), fault.error == 0 ? "Good" : "Key 30");
    if (fault.colour != kNoColour) {
      EXPECT_EQ(shownColour(user, key(kFaulty)), fault.colour);
    }
    const auto saved = shop.save(user);
    if (fault.caption.empty()) {
      EXPECT_EQ(saved[kFaulty], fault.line.substr(0, fault.line.size() - 1) + "-2147483630");
      continue;
    }
    EXPECT_EQ(caption(user, key(kFaulty)), fault.caption);
    EXPECT_EQ(saved[kFaulty].substr(0, fault.savedHead.size()), fault.savedHead);
    EXPECT_EQ(saved[28], lineOf({.key = 28, .product = "1", .caption = "Good", .back = kGood}));
  }
}

TEST(LayoutFaults, TheLargeEditorReportsTheFaultAndNeverShows) {
  for (const Fault& fault : kFaults) {
    SCOPED_TRACE(fault.name);
    Shop shop;
    shop.folder.write("Posdata/Posconfig.ini", "[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=1\r\n");
    // A lone CR ends a line as well.
    shop.folder.write("Posdata/fastmovers.txt", fileWith(fault.line, 108, "\r"));
    shop.start();
    EXPECT_EQ(shop.failure(), fault.error);
    EXPECT_EQ(WindowDriver::isShown("frmMainBig"), fault.error == 0);
  }
}

TEST(LayoutFaults, TooFewLinesStopTheLevelledEditorsLoadingAndEndTheLargeEditor) {
  for (const int count : {0, 10, 62, 63, 200}) {
    Shop shop;
    shop.folder.write("Posdata/FastMovers1.txt", fileWith(goodLine(kFaulty), count));
    WindowDriver user = shop.open();
    EXPECT_EQ(shop.failure(), 0);
    if (count > 0) {
      EXPECT_EQ(caption(user, key(std::min(count, 63) - 1)), "Good");
    }
    if (count < 63) {
      EXPECT_EQ(caption(user, key(count)), "Key " + std::to_string(count));
    }
  }
  for (const int count : {0, 107}) {
    Shop shop;
    shop.folder.write("Posdata/Posconfig.ini", "[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=00\r\n");
    shop.folder.write("Posdata/FastMovers.txt", fileWith(goodLine(kFaulty), count));
    shop.start();
    EXPECT_EQ(shop.failure(), 62);
    EXPECT_FALSE(WindowDriver::isShown("frmMainBig"));
  }
}

TEST(LayoutFaults, AnExistingFileThatCannotBeOpenedEndsTheLevelledEditorToo) {
  Shop shop;
  shop.folder.write("Posdata/FastMovers1.txt", goodLine(0) + "\r\n");
  std::filesystem::permissions(shop.folder.posdata() / "FastMovers1.txt",
                               std::filesystem::perms(0));
  shop.writeStore();
  {
    const support::AsOrdinaryUser ordinary;
    shop.start();
  }
  EXPECT_TRUE(shop.failure() == 70 || shop.failure() == 75) << shop.failure();
  EXPECT_FALSE(WindowDriver::isShown("frmMain"));
}
