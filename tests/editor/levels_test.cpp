#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include "support/Shop.h"

using support::caption;
using support::entry;
using support::key;
using support::kWhite;
using support::layoutOf;
using support::lineOf;
using support::Shop;
using support::WindowDriver;

namespace {

std::string name(WindowDriver& user) {
  return dynamic_cast<QLineEdit&>(user.control("txtName")).text().toStdString();
}

// A layout file whose keys have the products from `first` on.
std::string layoutFrom(int first, const std::string& colours) {
  std::vector<std::string> texts;
  for (int i = 0; i < 63; ++i)
    texts.push_back(std::to_string(i) + "," + std::to_string(first + i) + ",P" +
                    std::to_string(first + i) + "," + colours);
  return layoutOf(texts);
}

}  // namespace

TEST(Levels, ALevelChangeLoadsTheFileAndDiscardsUnsavedChangesSilently) {
  Shop shop;
  shop.folder.write("Posdata/fastmovers2.TXT", layoutFrom(300, "255,0"));
  shop.writeTouchButtons("[SETTINGS]\r\nSCREEN1=Counter\r\nscreen2=\" Lunch \"\r\n");
  WindowDriver user = shop.open();
  EXPECT_EQ(name(user), "") << "the name first shows when a level is chosen";
  user.drop(key(4), entry(u"Tea", 77));
  user.pick("cbLevel", 1);
  EXPECT_EQ(caption(user, key(4)), "P304");
  EXPECT_EQ(name(user), " Lunch ");
  EXPECT_EQ(support::shownColour(user, key(4)), 255);
  user.pick("cbLevel", 0);
  EXPECT_EQ(caption(user, key(4)), "Key 4");
  EXPECT_EQ(support::shownColour(user, key(4)), 0xFFFFFF);
  EXPECT_EQ(name(user), "Counter");
  EXPECT_TRUE(shop.host.messages.empty());
  // The level has no file of its own, so the key table still holds the other level's ids.
  EXPECT_EQ(shop.save(user)[4], lineOf({.key = 4, .product = "304", .back = kWhite}));
}

TEST(Levels, LoadSaveAndResetUseTheSameFileWhenTwoDifferInCase) {
  Shop shop;
  shop.folder.write("Posdata/FastMovers1.txt", layoutFrom(300, "255,0"));
  shop.folder.write("Posdata/fastmovers1.txt", "the other");
  WindowDriver user = shop.open();
  EXPECT_EQ(caption(user, key(4)), "P304");
  user.drop(key(4), entry(u"Tea", 77));
  EXPECT_EQ(shop.save(user)[4], lineOf({.key = 4, .product = "77", .caption = "Tea", .back = 255}));
  shop.host.answers = {process::kYes};
  user.click("cmdResetAll");
  EXPECT_FALSE(shop.folder.read("Posdata/FastMovers1.txt"));
  EXPECT_EQ(shop.folder.read("Posdata/fastmovers1.txt"), "the other");
}

TEST(Levels, SaveWritesTheLevelAndItsTrimmedNameAndNothingElse) {
  Shop shop;
  shop.folder.write("Posdata/FastMovers1.txt", "kept");
  shop.writeTouchButtons(
      "; kept\r\n[SETTINGS]\r\nSCREEN1=Counter\r\nAUTOFILL=0\r\n[Other]\r\na=b\r\n");
  WindowDriver user = shop.open();
  user.pick("cbLevel", 2);
  user.focus("txtName");
  user.type(u"  Lunch at the bar  ");
  EXPECT_EQ(name(user), "  Lunch at the ") << "fifteen characters at most";
  EXPECT_EQ(shop.save(user, "FastMovers3.txt").size(), 63U);
  EXPECT_EQ(name(user), "  Lunch at the ");
  EXPECT_EQ(shop.folder.read("Posdata/FastMovers1.txt"), "kept");
  EXPECT_FALSE(shop.folder.read("Posdata/FastMovers2.txt"));
  EXPECT_EQ(shop.touchFile(),
            "; kept\r\n[SETTINGS]\r\nSCREEN1=Counter\r\nAUTOFILL=0\r\nSCREEN3=Lunch at the\r\n"
            "[Other]\r\na=b\r\n");
}

TEST(Levels, ASaveRightAfterTheStartEmptiesTheStoredName) {
  Shop shop;
  shop.writeTouchButtons("[SETTINGS]\r\nSCREEN1=Counter\r\n");
  WindowDriver user = shop.open();
  shop.save(user);
  EXPECT_EQ(shop.touchFile(), "[SETTINGS]\r\nSCREEN1=\r\n");
}

TEST(Levels, ALoadDoesNotRestoreFontColoursAndASaveWritesTheShownOnes) {
  Shop shop;
  shop.folder.write("Posdata/FastMovers1.txt", layoutFrom(1, "16711680,255"));
  WindowDriver user = shop.open();
  const auto saved = shop.save(user);
  EXPECT_EQ(saved[62], lineOf({.key = 62, .product = "63", .caption = "P63", .back = 16711680}));
}

TEST(Levels, ALoadSetsTheTypefaceFromTheFifthField) {
  Shop shop;
  std::vector<std::string> texts(13, ",,Tea,255,-2147483630");
  texts[10] = ",,Tea,255,Liberation Mono";
  texts[12] = ",,Tea,255,";
  shop.folder.write("Posdata/FastMovers1.txt", layoutOf(texts));
  WindowDriver user = shop.open();
  const auto picture = [&](int index) { return user.control(key(index)).grab().toImage(); };
  EXPECT_NE(picture(10), picture(11));
  EXPECT_EQ(picture(12), picture(11)) << "an unknown typeface is replaced by the default one";
}

TEST(Levels, TheNoticeIsCentredAndShowsFor750Milliseconds) {
  Shop shop;
  WindowDriver user = shop.open();
  QElapsedTimer time;
  QRect bounds;
  int interval = 0;
  support::soon([&] {
    const QWidget& notice = WindowDriver("frmSaved").window();
    bounds = notice.geometry();
    interval = notice.findChild<QTimer*>("Timer")->interval();
    time.start();
  });
  user.click("cmdSave");
  // The timer alone closes the notice. On a busy machine the measurement begins late.
  EXPECT_GE(time.elapsed(), 600);
  EXPECT_EQ(interval, 750);
  EXPECT_EQ(bounds.size(), QSize(5775 / 15, 1995 / 15));
  const QPoint off = bounds.center() - user.window().screen()->geometry().center();
  EXPECT_LE(off.manhattanLength(), 2);
}

TEST(Levels, AResetLeavesTheIdsSoThatASaveWritesThemBesideEmptyCaptions) {
  Shop shop;
  shop.folder.write("Posdata/FASTMOVERS1.txt", layoutFrom(1, "255,0"));
  shop.writeTouchButtons("[SETTINGS]\r\nSCREEN1=Counter\r\n");
  WindowDriver user = shop.open();
  shop.host.answers = {process::kNo, process::kYes, process::kYes};
  user.click("cmdResetAll");
  ASSERT_EQ(shop.host.messages.size(), 1U);
  EXPECT_EQ(shop.host.messages[0].text, u"This will reset all the buttons. Are you sure?");
  EXPECT_EQ(shop.host.messages[0].title, u"Reset");
  EXPECT_EQ(shop.host.messages[0].style, 68);
  EXPECT_EQ(caption(user, key(7)), "P8");
  user.click("cmdResetAll");
  EXPECT_EQ(caption(user, key(7)), "Key 7");
  EXPECT_EQ(support::shownColour(user, key(7)), 0xFFFFFF);
  EXPECT_FALSE(shop.folder.read("Posdata/FASTMOVERS1.txt"));
  EXPECT_EQ(shop.touchFile(), "[SETTINGS]\r\nSCREEN1=Counter\r\n");
  user.click("cmdResetAll");  // the file is already deleted: no error
  EXPECT_EQ(shop.failure(), 0);
  EXPECT_EQ(shop.save(user)[7], lineOf({.key = 7, .product = "8", .back = kWhite}));
}
