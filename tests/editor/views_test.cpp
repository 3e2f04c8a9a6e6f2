#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QComboBox>

#include "support/Shop.h"

using support::caption;
using support::key;
using support::kWhite;
using support::lineOf;
using support::Shop;
using support::WindowDriver;

namespace {

std::pair<int, int> position(WindowDriver& user, const std::string& control) {
  return {user.control(control).x(), user.control(control).y()};
}

}  // namespace

TEST(Views, AnyAutofillSettingButZeroOpensTheAutofillViewWithTheStockRows) {
  Shop shop;
  shop.writeTouchButtons("[SETTINGS]\r\nAUTOFILL=yes\r\n[BUTTONS_BL]\r\nButtonHeight=900\r\n");
  shop.names[2] = std::nullopt;
  shop.names[3] = u"A stock description of more than thirty characters";
  const auto fromTheFile =
      lineOf({.key = 0, .product = "900", .caption = "From the file", .back = 255});
  shop.folder.write("Posdata/FastMovers1.txt", fromTheFile + "\r\n1,x");
  WindowDriver user = shop.open();
  EXPECT_EQ(caption(user, key(0)), "From the file");
  EXPECT_EQ(caption(user, key(1)), "Key 1") << "a free slot has an empty caption";
  EXPECT_EQ(caption(user, key(2)), "A stock description of more than thirty characters");
  EXPECT_EQ(position(user, key(1)), (std::pair{0, (8640 - 900 - 30) / 15}));
  for (const char* hidden : {"Label1", "Label2", "cbDept", "List1"})
    EXPECT_FALSE(user.isVisible(hidden)) << hidden;
  EXPECT_TRUE(user.isVisible("chkBarcode"));
  EXPECT_FALSE(user.drop(key(5), support::entry(u"Tea", 77))) << "no key takes drops in this view";
  EXPECT_TRUE(user.entries("List1").empty());
  EXPECT_TRUE(user.entries("cbDept").empty());
  user.click("chkBarcode");
  EXPECT_FALSE(user.entries("List1").empty()) << "the hidden list is filled all the same";
  auto saved = shop.save(user);
  EXPECT_EQ(saved[0], fromTheFile);
  EXPECT_EQ(saved[1], lineOf({.key = 1, .product = "2"}));
  user.pick("cbLevel", 1);
  EXPECT_EQ(caption(user, key(62)), "Item 126");
  user.pick("cbLevel", 2);
  EXPECT_EQ(caption(user, key(62)), "Item 189");
  user.pick("cbLevel", 0);  // the file overrides the stock rows at the start only
  EXPECT_EQ(caption(user, key(0)), "Item 1");
  EXPECT_EQ(shop.save(user)[0],
            lineOf({.key = 0, .product = "1", .caption = "Item 1", .back = kWhite}));
}

TEST(Views, CheckingAutofillArrangesTheKeysAtOnceAndUncheckingRestoresNothing) {
  Shop shop;
  WindowDriver user = shop.open();
  EXPECT_EQ(position(user, key(9)), (std::pair{2 * 90, 72}));
  user.pick("cbLevel", 2);
  user.click("Check1");
  EXPECT_EQ(position(user, key(9)), (std::pair{90, 576}));
  EXPECT_EQ(user.control(key(49)).height(), 70);
  EXPECT_EQ(caption(user, key(0)), "Item 1");
  EXPECT_EQ(static_cast<QComboBox&>(user.control("cbLevel")).currentIndex(), 0);
  EXPECT_EQ(shop.touchFile(), "[SETTINGS]\r\nAUTOFILL=1\r\nItemOne=BL\r\n");
  EXPECT_FALSE(user.isVisible("List1"));
  EXPECT_TRUE(user.drop(key(5), support::entry(u"Tea", 77))) << "the drop targets stay";
  std::string whileMessageIsUp;
  shop.host.whileMessageIsUp = [&](const auto&) { whileMessageIsUp = shop.touchFile(); };
  user.click("Check1");
  EXPECT_EQ(whileMessageIsUp, "[SETTINGS]\r\nAUTOFILL=1\r\nItemOne=BL\r\n");
  ASSERT_EQ(shop.host.messages.size(), 1U);
  EXPECT_EQ(shop.host.messages[0].text, u"Close the app and restart it.");
  EXPECT_EQ(shop.host.messages[0].title, u"Keystrand");
  EXPECT_EQ(shop.host.messages[0].style, 64);
  EXPECT_EQ(shop.touchFile(), "[SETTINGS]\r\nAUTOFILL=0\r\nItemOne=TL\r\n");
  EXPECT_EQ(position(user, key(9)), (std::pair{90, 576}));
  for (const char* hidden : {"lblLevel", "cbLevel", "List1", "cbDept"})
    EXPECT_FALSE(user.isVisible(hidden)) << hidden;
  EXPECT_EQ(caption(user, key(0)), "Key 0") << "level 1 was cleared and has no file";
}

TEST(Views, ALevelWithFewerThanSixtyThreeRowsEndsTheProgram) {
  Shop shop;
  shop.missingStock = {100};
  shop.writeTouchButtons("[SETTINGS]\r\nAUTOFILL=1\r\n");
  WindowDriver user = shop.open();
  user.pick("cbLevel", 1);
  EXPECT_EQ(shop.failure(), 3021);
  EXPECT_EQ(caption(user, key(0)), "Key 0") << "cleared before the failure, and not filled";
  EXPECT_EQ(shop.host.endStatus, 1);
}

TEST(Views, AStartThatFailsShowsNoScreen) {
  struct Case {
    std::string touch;
    std::string settings;
    std::int32_t error;
  };
  for (const Case& bad : {Case{"", "HIDE_BARCODE=\n", 13}, Case{"", "HIDE_BARCODE=3\n", 380},
                          Case{"", "HIDE_BARCODE=99999\n", 6},
                          Case{"[SETTINGS]\r\nAUTOFILL=\r\n[BUTTONS_BL]\r\nrows=\r\n", "", 13},
                          Case{"[SETTINGS]\r\nAUTOFILL=1\r\n[BUTTONS_BL]\r\nrows=1\r\n", "", 6}}) {
    Shop shop;
    shop.writeTouchButtons(bad.touch);
    shop.folder.write(shop.folder.settingsFolder() / "tavenor.ini",
                      "[comms]\nstorename=Demo\n[KEYSTRAND]\n" + bad.settings);
    shop.start();
    EXPECT_EQ(shop.failure(), bad.error) << bad.touch << bad.settings;
    EXPECT_FALSE(WindowDriver::isShown("frmMain"));
  }
  Shop elsewhere;  // a store folder that isn't there
  elsewhere.folder.write(elsewhere.folder.settingsFolder() / "tavenor.ini",
                         "[comms]\nstorename=Nowhere\n");
  elsewhere.start();
  EXPECT_EQ(elsewhere.failure(), -2147467259);
  EXPECT_FALSE(WindowDriver::isShown("frmMain"));
}

TEST(HandOff, BothSettingsAreWrittenBeforeTheProgramStarts) {
  Shop shop;
  shop.folder.write("TAVENOR_Comms.exe", "");
  WindowDriver user = shop.open();
  user.click("cmdUpdate");
  ASSERT_EQ(shop.host.started.size(), 1U);
  EXPECT_EQ(shop.host.started[0].program, shop.folder.path() / "TAVENOR_Comms.exe");
  EXPECT_EQ(shop.host.started[0].style, process::WindowStyle::MinimizedFocus);
  EXPECT_EQ(shop.setting("UPDATE"), "PROGRAMDATA");
  EXPECT_EQ(shop.setting("FORMTOOPEN"), "UPDATEPOS");
  user.click("cmdUpdate");
  EXPECT_EQ(shop.host.started.size(), 2U);
  EXPECT_EQ(shop.failure(), 0);
}

TEST(HandOff, WithoutTheProgramItFailsWithBothSettingsWritten) {
  Shop shop;
  shop.host.startFailure = runtime::RunTimeError(runtime::ErrorNumber::FileNotFound);
  shop.open().click("cmdUpdate");
  EXPECT_EQ(shop.failure(), 53);
  EXPECT_EQ(support::readFile(shop.folder.settingsFolder() / "tavenor.ini"),
            "[comms]\nstorename=Demo\nUPDATE=PROGRAMDATA\nFORMTOOPEN=UPDATEPOS\n");
}

TEST(Exit, NeitherSavesNorAsks) {
  Shop shop;
  WindowDriver user = shop.open();
  user.drop(key(5), support::entry(u"Tea", 77));
  user.click("cmdClose");
  EXPECT_EQ(shop.host.endStatus, 0);
  EXPECT_TRUE(shop.host.messages.empty());
  EXPECT_FALSE(shop.folder.read("Posdata/FastMovers1.txt"));
}
