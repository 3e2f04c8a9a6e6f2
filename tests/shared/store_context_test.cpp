#include <gtest/gtest.h>

#include "shared/mdOpenDatabase.h"
#include "support/Shop.h"

using support::Shop;
using support::WindowDriver;

TEST(StoreContext, OnlyZeroOrAMissingSettingOpensTheLevelledEditor) {
  for (const char* large :
       {"", "[GENERAL]\r\nOTHER=1\r\n", "[general]\r\nload_fastmovers_large = 0 \r\n"}) {
    Shop shop;
    shop.folder.write("Posdata/POSCONFIG.INI", large);
    shop.start();
    EXPECT_TRUE(WindowDriver::isShown("frmMain")) << large;
  }
  for (const char* large : {"=", "=00", "=1", "=O"}) {
    Shop shop;
    shop.folder.write("Posdata/Posconfig.ini",
                      std::string("[GENERAL]\r\nLOAD_FASTMOVERS_LARGE") + large);
    shop.start();
    EXPECT_TRUE(WindowDriver::isShown("frmMainBig")) << large;
    EXPECT_FALSE(WindowDriver::isShown("frmMain"));
  }
}

TEST(StoreContext, WithoutAStoreNameTheDatabaseIsReadFromTheStoresFolder) {
  Shop shop;
  shop.writeStore();
  std::filesystem::rename(shop.storeFile(), shop.folder.path() / "Stores" / "master.MDB");
  shop.folder.write(shop.folder.settingsFolder() / "tavenor.ini", "[other]\nstorename=Demo\n");
  WindowDriver user = shop.open();
  EXPECT_FALSE(user.entries("List1").empty());
  EXPECT_EQ(mdOpenDatabase::StoreFolder.substr(mdOpenDatabase::StoreFolder.size() - 8),
            u"\\Stores\\");
}
