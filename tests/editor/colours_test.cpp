#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QWidget>
#include <cstdlib>

#include "support/Shop.h"

using support::caption;
using support::entry;
using support::key;
using support::kWhite;
using support::lineOf;
using support::Shop;
using support::shownColour;
using support::WindowDriver;

namespace {
constexpr std::int32_t kRed = 255;
constexpr std::int32_t kBlue = 0xFF0000;

/// True when a colour shows on a control away from its edge.
bool hasInk(const WindowDriver& user, std::string_view control, const QColor& colour) {
  constexpr int kEdge = 8;
  constexpr int kNear = 60;
  const QImage picture = user.control(control).grab().toImage();
  for (int y = kEdge; y < picture.height() - kEdge; ++y)
    for (int x = kEdge; x < picture.width() - kEdge; ++x) {
      const QColor seen = picture.pixelColor(x, y);
      if (std::abs(seen.red() - colour.red()) + std::abs(seen.green() - colour.green()) +
              std::abs(seen.blue() - colour.blue()) <
          kNear)
        return true;
    }
  return false;
}

}  // namespace

TEST(Colours, CancelAppliesTheColourConfirmedLast) {
  Shop shop;
  WindowDriver user = shop.open();
  shop.host.colours = {std::nullopt, kRed, std::nullopt, kBlue, std::nullopt};
  user.click("cmdSelCol");  // key 0, Cancel, nothing confirmed yet: black
  user.click(key(4));
  user.click("cmdSelCol");
  user.click(key(5));
  user.click("cmdFontColour");  // Cancel: applies the red last confirmed for a back colour
  user.click(key(6));
  user.pick("cbLevel", 1);
  user.click("cmdFontColour");  // still key 6
  user.click(key(7));
  user.click("cmdSelCol");  // Cancel: applies the blue last confirmed for a font colour
  EXPECT_EQ(shop.host.colourDialogs, 5);
  const auto saved = shop.save(user, "FastMovers2.txt");
  EXPECT_EQ(saved[5], lineOf({.key = 5, .back = kWhite, .font = kRed}));
  EXPECT_EQ(saved[6], lineOf({.key = 6, .back = kWhite, .font = kBlue}));
  EXPECT_EQ(saved[7], lineOf({.key = 7, .back = kBlue}));
  EXPECT_EQ(saved[0], lineOf({.key = 0, .back = kWhite}))
      << "the level change cleared the back colour";
  user.moveTo(key(7));
  EXPECT_EQ(shownColour(user, key(7)), kBlue);
  user.press(key(7));
  EXPECT_EQ(shownColour(user, key(7)), kBlue);
  user.release(key(7));
}

TEST(Colours, ALoadedKeyHasTheDefaultPressColourUntilAColourIsSet) {
  Shop shop;
  std::vector<std::string> texts;
  for (int i = 0; i < 63; ++i) texts.push_back(lineOf({.key = i, .back = kRed, .font = 0}));
  shop.folder.write("Posdata/FastMovers1.txt", support::layoutOf(texts));
  WindowDriver user = shop.open();
  EXPECT_EQ(shownColour(user, key(10)), kRed);
  user.moveTo(key(10));
  EXPECT_EQ(shownColour(user, key(10)), kRed) << "entering with the pointer copies the back colour";
  user.press(key(10));
  EXPECT_EQ(shownColour(user, key(10)), 0xE6EBEC);
  user.release(key(10));
}

TEST(Colours, ResetClearsTheKeyAndLeavesTheFileAlone) {
  Shop shop;
  WindowDriver user = shop.open();
  shop.host.colours = {kRed, kBlue};
  user.click(key(8));
  user.click("cmdSelCol");
  user.click("cmdFontColour");
  user.drop(key(8), entry(u"Tea", 77));
  EXPECT_EQ(shop.save(user)[8],
            lineOf({.key = 8, .product = "77", .caption = "Tea", .back = kRed, .font = kBlue}));
  user.click("cmdResetColor");
  EXPECT_EQ(shop.layout("FastMovers1.txt")[8],
            lineOf({.key = 8, .product = "77", .caption = "Tea", .back = kRed, .font = kBlue}));
  EXPECT_EQ(caption(user, key(8)), "Key 8");
  EXPECT_EQ(shop.save(user)[8], lineOf({.key = 8, .back = kWhite}));
}

TEST(CopyMode, CopiedColoursSurviveLevelChangesSavesAndResetsUntilCopyModeEnds) {
  Shop shop;
  WindowDriver user = shop.open();
  EXPECT_EQ(caption(user, "cmdCopy"), "Copy Button Settings");
  shop.host.colours = {kRed, kBlue, 0x00FF00};
  user.click(key(1));
  user.click("cmdSelCol");
  user.click("cmdFontColour");
  user.click("cmdCopy");
  EXPECT_EQ(caption(user, "cmdCopy"), "STOP COPY");
  EXPECT_EQ(shownColour(user, "cmdCopy"), kRed);
  EXPECT_TRUE(hasInk(user, "cmdCopy", Qt::white));
  user.click(key(2));
  user.click("cmdResetColor");  // the source key is still current
  shop.save(user);
  user.pick("cbLevel", 2);
  user.click(key(3));
  user.drop(key(3), entry(u"Tea", 77));
  user.click("cmdSelCol");  // and it stays current: key 1 becomes green
  auto saved = shop.save(user, "FastMovers3.txt");
  EXPECT_EQ(shop.layout("FastMovers1.txt")[1], lineOf({.key = 1, .back = kWhite}));
  EXPECT_EQ(shop.layout("FastMovers1.txt")[2], lineOf({.key = 2, .back = kRed, .font = kBlue}));
  EXPECT_EQ(saved[3],
            lineOf({.key = 3, .product = "77", .caption = "Tea", .back = kRed, .font = kBlue}));
  EXPECT_EQ(saved[1], lineOf({.key = 1, .back = 0x00FF00}));
  user.click("cmdCopy");
  EXPECT_EQ(caption(user, "cmdCopy"), "Copy Button Settings");
  EXPECT_EQ(shownColour(user, "cmdCopy"), 0xFFFFFF)
      << "the end of copy mode does not restore the look of the start";
  EXPECT_TRUE(hasInk(user, "cmdCopy", Qt::black));
  user.click(key(4));
  saved = shop.save(user, "FastMovers3.txt");
  EXPECT_EQ(saved[4], lineOf({.key = 4, .back = kWhite}));
  shop.host.colours = {0x123456};
  user.click("cmdSelCol");
  EXPECT_EQ(shop.save(user, "FastMovers3.txt")[4], lineOf({.key = 4, .back = 0x123456}));
}
