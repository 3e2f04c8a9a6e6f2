#include <gtest/gtest.h>

#include <map>
#include <string>

#include "editor/keygeometry.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace {

constexpr std::int16_t kKeys = 63;

struct Arrangement {
  std::map<int, keygeometry::KeyPosition> placed;
  int error = 0;
};

// Reads the settings from a file with these lines and arranges the keys until an error.
Arrangement arrangeWith(const std::string& settings) {
  const support::ProgramFolder folder;
  folder.write("Posdata/FastTouchButtons.ini", "[BUTTONS_BL]\r\n" + settings);
  Arrangement arranged;
  arranged.error = support::errorNumberOf([&] {
    keygeometry::Arrange(
        keygeometry::ReadSettings(), kKeys,
        [&](std::int16_t key, const keygeometry::KeyPosition& at) { arranged.placed[key] = at; });
  });
  return arranged;
}

}  // namespace

TEST(KeyGeometry, WithDefaultsTheKeysFillColumnsUpwardsFromTheBottomLeft) {
  const Arrangement arranged = arrangeWith("");
  ASSERT_EQ(arranged.error, 0);
  ASSERT_EQ(arranged.placed.size(), 63U);
  const std::map<int, std::pair<int, int>> expected{
      {0, {0, 8640}}, {1, {0, 7560}},    {6, {0, 2160}}, {7, {0, 1080}},
      {8, {0, 0}},    {9, {1350, 8640}}, {62, {8100, 0}}};
  for (const auto& [key, position] : expected) {
    EXPECT_EQ(arranged.placed.at(key).Left, position.first) << key;
    EXPECT_EQ(arranged.placed.at(key).Top, position.second) << key;
  }
  EXPECT_EQ(arranged.placed.at(49).Height, 1050);
}

TEST(KeyGeometry, EachMissingSettingHasItsDefault) {
  const Arrangement arranged =
      arrangeWith("Space=-50\r\nstartleft= 100 \r\nButtonHeight=\"500\"\r\n");
  ASSERT_EQ(arranged.error, 0);
  EXPECT_EQ(arranged.placed.at(1).Top, 8640 - 500 + 50);
  EXPECT_EQ(arranged.placed.at(9).Left, 100 + 1320 - 50);
  EXPECT_EQ(arranged.placed.at(62).Height, 500);
}

TEST(KeyGeometry, AColumnHasAsManyKeysAsTheRowsSetting) {
  const Arrangement seven = arrangeWith("rows=7\r\n");
  EXPECT_EQ(seven.error, 0);
  EXPECT_EQ(seven.placed.at(56).Left, 8 * 1350);
  const Arrangement ten = arrangeWith("rows=10\r\n");
  EXPECT_EQ(ten.error, 0);
  EXPECT_EQ(ten.placed.at(9).Top, -1080);
  EXPECT_EQ(ten.placed.at(60).Left, 6 * 1350);
}

TEST(KeyGeometry, AnOverflowStopsTheArrangementAndKeepsEarlierPositions) {
  const Arrangement oneRow = arrangeWith("rows=1\r\n");
  EXPECT_EQ(oneRow.error, 6);
  EXPECT_EQ(oneRow.placed.rbegin()->first, 24);
  EXPECT_EQ(oneRow.placed.at(24).Left, 32400);
  const Arrangement noRow = arrangeWith("rows=0\r\n");
  EXPECT_EQ(noRow.error, 6);
  EXPECT_EQ(noRow.placed.rbegin()->first, 38);
  EXPECT_EQ(noRow.placed.at(38).Top, -32400);
  // The row counter overflows after the first key.
  const Arrangement lowestRow = arrangeWith("rows=-32768\r\nButtonHeight=0\r\nSpace=0\r\n");
  EXPECT_EQ(lowestRow.error, 6);
  EXPECT_EQ(lowestRow.placed.size(), 1U);
  // Width and gap are added one after the other: the first sum overflows already.
  const Arrangement wide =
      arrangeWith("rows=1\r\nButtonWidth=32767\r\nSpace=-32767\r\nStartLeft=1\r\n");
  EXPECT_EQ(wide.error, 6);
  EXPECT_EQ(wide.placed.size(), 1U);
}

TEST(KeyGeometry, AValueThatIsNoNumberOrBeyondItsRangeFailsBeforeAnyKeyIsPlaced) {
  const std::map<std::string, int> cases{{"rows=\r\n", 13},
                                         {"Space=wide\r\n", 13},
                                         {"ButtonWidth=32768\r\n", 6},
                                         {"ButtonHeight=-32769\r\n", 6},
                                         {"StartTop=2147483648\r\n", 6},
                                         {"StartTop=32768\r\n", 6},
                                         {"StartLeft=-32769\r\n", 6}};
  for (const auto& [settings, error] : cases) {
    const Arrangement arranged = arrangeWith(settings);
    EXPECT_EQ(arranged.error, error) << settings;
    EXPECT_TRUE(arranged.placed.empty()) << settings;
  }
}
