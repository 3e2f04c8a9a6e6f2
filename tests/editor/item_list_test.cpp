#include <gtest/gtest.h>

#include "support/Shop.h"

using support::Shop;
using support::WindowDriver;

TEST(ItemList, EntriesCarryThirtyCharactersThenAHundredBlanksThenTheId) {
  Shop shop;
  shop.names[7] = u"Apple juice, exactly thirty chr";  // 31 characters: the last one is lost
  shop.names[142] = u"Apple";
  WindowDriver user = shop.open();
  const auto entries = user.entries("List1");
  ASSERT_GE(entries.size(), 2U);
  EXPECT_EQ(entries[0], u"Apple" + std::u16string(25 + 100, u' ') + u"142");
  EXPECT_EQ(entries[1], u"Apple juice, exactly thirty ch" + std::u16string(100, u' ') + u"7");
  EXPECT_EQ(entries.size(), 197U) << "free slots are no items";
  for (const auto& text : entries) EXPECT_EQ(text.find_first_not_of(u' ', 30), 130U);
}

TEST(ItemList, TheListHasNoEmptyNamesOrFreeSlotsAndIsSortedByName) {
  Shop shop;
  shop.slotCount = 12;
  for (int id = 1; id <= 12; ++id) shop.names[id] = std::nullopt;
  shop.names[1] = u"zebra";
  shop.names[2] = u"Co-op";
  shop.names[3] = u"coop";
  shop.names[4] = u"";
  shop.names[5] = u"\u00c9clair";
  shop.names[6] = u"eclair";
  shop.names[9] = u"Coops";
  WindowDriver user = shop.open();
  std::vector<std::u16string> ids;
  for (const auto& text : user.entries("List1")) ids.push_back(text.substr(130));
  EXPECT_EQ(ids, (std::vector<std::u16string>{u"3", u"2", u"9", u"6", u"5", u"1"}));
}

TEST(ItemList, TheDepartmentAndTheBarcodeBoxFilterTheListTogether) {
  Shop shop;
  shop.barcodes[2] = u"   ";  // blanks are a barcode
  shop.barcodes[6] = u"";
  WindowDriver user = shop.open();
  EXPECT_EQ(user.entries("cbDept"),
            (std::vector<std::u16string>{u"", u"Drinks", u"Empty hall", u"Food", u"O'Brien's"}));
  user.pick("cbDept", 1);
  const std::size_t drinks = user.entries("List1").size();
  EXPECT_EQ(drinks, 98U);  // the products with even ids, except two free slots
  user.click("chkBarcode");
  EXPECT_EQ(shop.setting("HIDE_BARCODE"), "1");
  const auto without = user.entries("List1");
  EXPECT_LT(without.size(), drinks);
  for (const auto& text : without) EXPECT_NE(text.substr(130), u"2");
  EXPECT_TRUE(std::any_of(without.begin(), without.end(),
                          [](const auto& text) { return text.substr(130) == u"6"; }));
  user.pick("cbDept", 2);
  EXPECT_TRUE(user.entries("List1").empty());
  user.pick("cbDept", 0);  // the department with an empty name selects all items
  user.click("chkBarcode");
  EXPECT_EQ(user.entries("List1").size(), 197U);
  EXPECT_EQ(shop.setting("HIDE_BARCODE"), "0");
  EXPECT_EQ(shop.failure(), 0);
}

TEST(ItemList, AnApostropheInADepartmentsNameEndsTheProgram) {
  Shop shop;
  WindowDriver user = shop.open();
  user.pick("cbDept", 4);
  EXPECT_EQ(shop.failure(), -2147217900);
  EXPECT_EQ(shop.host.endStatus, 1);
}

TEST(ItemList, TheStoredBarcodeSettingFiltersTheListAtTheStart) {
  Shop shop;
  shop.folder.write(shop.folder.settingsFolder() / "tavenor.ini",
                    "[comms]\nstorename=Demo\n[KEYSTRAND]\nHIDE_BARCODE= 1 \n");
  WindowDriver user = shop.open();
  EXPECT_LT(user.entries("List1").size(), 197U);
}
