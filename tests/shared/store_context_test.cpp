#include <gtest/gtest.h>

#include "platform/adodb/Connection.h"
#include "shared/mdOpenDatabase.h"
#include "shared/mdWriteINI.h"
#include "support/FileFaults.h"
#include "support/Shop.h"

using support::Shop;
using support::WindowDriver;

TEST(StoreContext, ExactlyNoughtOpensTheLevelledEditor) {
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

TEST(StoreContext, WithoutAStoreNameTheDatabaseLiesInTheStoresFolderItself) {
  Shop shop;
  shop.writeStore();
  std::filesystem::rename(shop.storeFile(), shop.folder.path() / "Stores" / "master.MDB");
  shop.folder.write(shop.folder.settingsFolder() / "tavenor.ini", "[other]\nstorename=Demo\n");
  WindowDriver user = shop.open();
  EXPECT_FALSE(user.entries("List1").empty());
  EXPECT_EQ(mdOpenDatabase::StoreFolder.substr(mdOpenDatabase::StoreFolder.size() - 8),
            u"\\Stores\\");
}

TEST(StoreContext, AnOpenConnectionIsReplacedAndAClosedOneLeft) {
  Shop shop;
  shop.start();
  mdOpenDatabase::CloseDatabase();
  mdOpenDatabase::CloseDatabase();
  mdOpenDatabase::OpenDatabase(u"mAsTeR");
  mdOpenDatabase::OpenDatabase(u"MASTER");
  EXPECT_EQ(mdOpenDatabase::StoreConnection->State(), ADODB::kStateOpen);
  mdOpenDatabase::CloseDatabase();
  EXPECT_EQ(mdOpenDatabase::StoreConnection->State(), ADODB::kStateClosed);
  EXPECT_EQ(support::errorNumberOf([] { mdOpenDatabase::OpenDatabase(u"Absent"); }), -2147467259);
}

TEST(StoreContext, AnEmptyProfileFileNameFindsNoFileAndAWriteWithoutAFolderIsSilent) {
  const support::ProgramFolder folder;
  EXPECT_EQ(mdWriteINI::ReadINI(u"", u"DATABASE", u"dbsource", u"x\\stores\\y"), u"x\\stores\\y");
  EXPECT_EQ(mdWriteINI::ReadINI(u"", u"a", u"b", 8640), u"8640");
  const std::u16string missing = u"/nowhere\\Posdata\\a.ini";
  EXPECT_FALSE(mdWriteINI::WriteINI(missing, u"a", u"b", u"c"));
}
