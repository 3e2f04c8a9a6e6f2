#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include "support/Shop.h"

using support::caption;
using support::key;
using support::kWhite;
using support::lineOf;
using support::Shop;
using support::WindowDriver;

namespace {

/// A shop that opens the large editor. `setting` is the text after the setting's name, from its "="
/// on.
struct LargeShop : Shop {
  explicit LargeShop(std::string_view setting = "=") {
    folder.write("Posdata/Posconfig.ini",
                 std::string("[GENERAL]\r\nLOAD_FASTMOVERS_LARGE").append(setting));
  }
  std::vector<std::string> save(WindowDriver& user) { return Shop::save(user, "FastMovers.txt"); }
};

}  // namespace

TEST(LargeEditor, RowsAreTheIdInTenCharactersAndTheFullName) {
  LargeShop shop;
  shop.names[7] = u"Apple " + std::u16string(54, u'x');
  shop.names[142] = u"Apple";
  WindowDriver user = shop.open("frmMainBig");
  const auto entries = user.entries("List1");
  EXPECT_EQ(entries[0], u"142       Apple");
  EXPECT_EQ(entries[1], u"7         Apple " + std::u16string(54, u'x'));
  EXPECT_EQ(entries.size(), 197U);
  user.doubleClickRow("List1", 1);
  EXPECT_EQ(caption(user, key(0)), "Apple " + std::string(54, 'x'));
}

TEST(LargeEditor, ACommaInANameEndsTheNextStart) {
  std::vector<std::string> saved;
  {
    LargeShop shop;
    shop.names[7] = u"Apple, green";
    WindowDriver user = shop.open("frmMainBig");
    user.doubleClickRow("List1", 0);
    saved = shop.save(user);
  }
  LargeShop next("=1");
  next.folder.write("Posdata/FastMovers.txt", support::layoutOf(saved));
  next.start();
  EXPECT_EQ(next.failure(), 13);
}

TEST(LargeEditor, IdsFromTheFileStayUntrimmedAndFontColoursAreNotRestored) {
  LargeShop shop;
  std::vector<std::string> texts(108, "x,  77 , Tea ,255,65280");
  texts[10] = "x,  77 , Tea ,255,Liberation Mono";
  shop.folder.write("Posdata/FASTMOVERS.TXT", support::layoutOf(texts));
  WindowDriver user = shop.open("frmMainBig");
  const auto picture = [&](int index) { return user.control(key(index)).grab().toImage(); };
  EXPECT_NE(picture(10), picture(11)) << "the fifth field is the typeface";
  EXPECT_EQ(picture(12), picture(11));
  shop.host.colours = {0x00FF00};
  user.click(key(3));
  user.drop(key(9), u"77        Tea");  // key 3 stays the current one
  user.click("cmdSelCol");
  user.click("cmdCopy");
  user.click(key(4));
  user.click("cmdCopy");
  user.click(key(5));
  user.click("cmdResetColor");
  user.click("cmdSave");
  EXPECT_FALSE(shop.folder.read("Posdata/FastMovers.txt")) << "the file keeps its name";
  const auto saved = shop.layout("FASTMOVERS.TXT");
  EXPECT_EQ(saved[2], lineOf({.key = 2, .product = "  77 ", .caption = " Tea ", .back = 255}));
  EXPECT_EQ(saved[3], lineOf({.key = 3, .product = "  77 ", .caption = " Tea ", .back = 65280}));
  EXPECT_EQ(saved[4], lineOf({.key = 4, .product = "  77 ", .caption = " Tea ", .back = 65280}));
  EXPECT_EQ(saved[5], lineOf({.key = 5, .back = kWhite}));
  EXPECT_EQ(saved[9], lineOf({.key = 9, .product = "77", .caption = "Tea", .back = 255}));
}

TEST(LargeEditor, AnEntrysIdIsCheckedBeforeItsLength) {
  struct Case {
    std::u16string text;
    int error;
  };
  for (const Case& bad : {Case{u"", 13}, Case{u"no number at all", 13}, Case{u"12345", 5},
                          Case{u"40000     Tea", 6}, Case{u"4000000000Tea", 6}}) {
    LargeShop other("=2");
    WindowDriver user = other.open("frmMainBig");
    user.drop(key(3), bad.text);
    EXPECT_EQ(other.failure(), bad.error);
    EXPECT_EQ(caption(user, key(3)), "Key 3");
  }
}

TEST(LargeEditor, ADoubleClickWithNothingSelectedEndsTheProgram) {
  LargeShop shop;
  shop.slotCount = 3;  // leaves room below the last row
  WindowDriver user = shop.open("frmMainBig");
  user.doubleClickRow("List1", 3);
  EXPECT_EQ(shop.failure(), 5);
}

TEST(LargeEditor, TabGoesFromKey62ThroughTheCommandsToKey63) {
  LargeShop shop;
  WindowDriver user = shop.open("frmMainBig");
  EXPECT_TRUE(user.hasFocus("List1"));
  user.tab();
  EXPECT_TRUE(user.hasFocus(key(0)));
  user.focus(key(62));
  for (const std::string next :
       {"cmdSelCol", "cmdFontColour", "cmdResetColor", "cmdCopy", "cmdSave", "cmdClose"}) {
    user.tab();
    EXPECT_TRUE(user.hasFocus(next)) << next;
  }
  user.tab();
  EXPECT_TRUE(user.hasFocus(key(63)));
}

TEST(LargeEditor, ClosingTheWindowEndsTheProgramWithoutSaving) {
  LargeShop shop;
  WindowDriver user = shop.open("frmMainBig");
  user.drop(key(3), u"77        Tea");
  user.close();
  EXPECT_FALSE(WindowDriver::isShown("frmMainBig"));
  EXPECT_FALSE(shop.folder.read("Posdata/FastMovers.txt"));
  EXPECT_TRUE(shop.host.messages.empty());
}
