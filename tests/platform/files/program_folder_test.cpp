#include <gtest/gtest.h>

#include "platform/files/ProgramFolder.h"
#include "support/ProgramFolder.h"

namespace fs = std::filesystem;

using files::programFolder;
using files::resolve;

TEST(ProgramFolder, IsThatOfTheStartedPathAndLinksAreNotFollowed) {
  const support::ProgramFolder folder;
  const fs::path real = folder.path() / "installed" / "keystrand";
  const fs::path link = folder.path() / "pos" / "keystrand";
  folder.write("installed/keystrand", "");
  fs::permissions(real, fs::perms{0755});
  fs::create_directory(link.parent_path());
  fs::create_symlink(real, link);

  files::setProgramFile(link);
  EXPECT_EQ(programFolder(), link.parent_path().u16string());

  // A relative path is relative to the working folder at the start, even after a change of folder.
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  files::setProgramFile("./pos/keystrand");
  fs::current_path(before);
  EXPECT_EQ(programFolder(), link.parent_path().u16string());

  // An absolute path needs no working folder.
  const fs::path gone = folder.path() / "gone";
  fs::create_directory(gone);
  fs::current_path(gone);
  fs::remove(gone);
  files::setProgramFile(link);
  fs::current_path(before);
  EXPECT_EQ(programFolder(), link.parent_path().u16string());

  files::setProgramFile("/keystrand");
  EXPECT_EQ(programFolder(), u"");
  EXPECT_EQ(resolve(programFolder() + u"\\tmp"), "/tmp");
}

TEST(ProgramFolder, NamesMatchInAnyCaseAndTheFirstMatchInByteOrderWins) {
  const support::ProgramFolder folder;
  folder.write("STORES/Café/master.MDB", "");
  folder.write("STORES/Café/MASTER.mdb", "");
  folder.write("Posdata/FastMovers1.txt", "");
  folder.write("Posdata/fastmovers1.txt", "");
  folder.write("posdata/New.txt", "");
  const std::u16string base = programFolder();

  for (const char16_t* name : {u"\\Stores\\CAFÉ\\\\MASTER.mdb", u"\\STORES\\Café\\master.MDB"})
    EXPECT_EQ(resolve(base + name), folder.path() / "STORES" / "Café" / "MASTER.mdb");
  // Reader, writer and reset spell the name in three ways, and must find one file.
  for (const char16_t* name : {u"\\Posdata\\fastmovers1.txt", u"\\posdata\\FastMovers1.txt",
                               u"\\Posdata\\Fastmovers1.txt"})
    EXPECT_EQ(resolve(base + name), folder.posdata() / "FastMovers1.txt");
  EXPECT_EQ(resolve(base + u"\\posdata\\New.txt"), folder.posdata() / "New.txt")
      << "not below posdata";
  EXPECT_EQ(resolve(base + u"\\Missing\\New.txt"), folder.path() / "Missing" / "New.txt");
}

TEST(ProgramFolder, UnusualPathsAreResolvedWithoutFailure) {
  const support::ProgramFolder folder;
  folder.write("Posdata/\xFF\xFE.txt", "");
  const std::u16string base = programFolder();
  EXPECT_EQ(resolve(base + u"\\Posdata\\any.txt"), folder.posdata() / "any.txt");
  EXPECT_EQ(resolve(base + u"\\Stores\\/etc/passwd"), folder.path() / "Stores/etc/passwd");
  EXPECT_EQ(resolve(base + u"\\Stores\\..\\x"), folder.path() / "Stores" / ".." / "x");
  EXPECT_EQ(resolve(base + u"\\" + std::u16string(1, 0xD800)), folder.path() / "\xEF\xBF\xBD");
  EXPECT_EQ(resolve(u""), "");
}

TEST(ProgramFolder, MayHaveANameThatIsNotValidUtf8) {
  const support::ProgramFolder folder;
  folder.write("caf\xE9/Posdata/x.txt", "");
  files::setProgramFile(folder.path() / "caf\xE9" / "keystrand");
  EXPECT_EQ(resolve(programFolder() + u"\\posdata\\X.TXT"),
            folder.path() / "caf\xE9" / "Posdata" / "x.txt");
}
