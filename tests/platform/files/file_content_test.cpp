#include <gtest/gtest.h>

#include <chrono>

#include "platform/files/FileContent.h"
#include "platform/files/FileError.h"
#include "platform/files/FolderLock.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace fs = std::filesystem;

using support::errorNumberOf;

namespace {

void replaceContent(const fs::path& path, const std::string& bytes) {
  files::changeContent(path, [&](const std::string&) { return bytes; });
}

class FileContent : public testing::Test {
 protected:
  std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder.posdata()), fs::directory_iterator()));
  }

  support::ProgramFolder folder;
  fs::path path = folder.posdata() / "FastTouchButtons.ini";
};

}  // namespace

TEST_F(FileContent, IsReadAndReplacedWithItsPermissionsKept) {
  EXPECT_EQ(files::readContent(path), std::nullopt);
  EXPECT_EQ(files::readContent(path / "below"), std::nullopt);
  replaceContent(path, "first\r\n");
  fs::permissions(path, fs::perms{0640});
  replaceContent(path, std::string("sec\0nd", 6));
  EXPECT_EQ(files::readContent(path), std::string("sec\0nd", 6));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0640});
  EXPECT_EQ(entries(), 1U);
  EXPECT_EQ(errorNumberOf([&] { files::readContent(folder.posdata()); }), 75);
}

TEST_F(FileContent, AFaultAtAnyStepLeavesTheOldOrTheNewContentAndNoOtherFile) {
  folder.write("Posdata/FastTouchButtons.ini", "old");
  int step = 0;
  for (;; ++step) {
    support::FileFaults faults;
    faults.cutAtChange(step, 2);
    const bool failed = errorNumberOf([&] { replaceContent(path, "brand new"); }) != 0;
    EXPECT_EQ(entries(), 1U) << step;
    if (!failed) break;
    EXPECT_EQ(support::readFile(path), step < 3 ? "old" : "brand new") << step;
  }
  EXPECT_EQ(step, 4);  // write, sync, rename, sync of the folder
  EXPECT_EQ(support::readFile(path), "brand new");
}

TEST_F(FileContent, ASymbolicLinkStaysAndAnIrreplaceableFileIsWrittenInPlace) {
  folder.write("real.ini", "old content");
  fs::create_symlink(folder.path() / "real.ini", path);
  replaceContent(path, "new");
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(folder.read("real.ini"), "new");

  fs::create_hard_link(folder.path() / "real.ini", folder.path() / "second name.ini");
  // Change 0 is the write in place, change 1 its sync; there is no change 2.
  for (const int step : {1, 2}) {
    support::FileFaults faults;
    faults.cutAtChange(step);
    EXPECT_EQ(errorNumberOf([&] { replaceContent(path, "newest"); }), step == 1 ? 57 : 0);
  }
  EXPECT_EQ(folder.read("second name.ini"), "newest");

  const fs::path closed = folder.path() / "closed";
  folder.write("closed/x.ini", "old content");
  fs::permissions(closed / "x.ini", fs::perms{0666});
  fs::permissions(closed, fs::perms{0555});
  {
    const support::AsOrdinaryUser user;
    replaceContent(closed / "x.ini", "new");
    EXPECT_EQ(errorNumberOf([&] { replaceContent(closed / "y.ini", "new"); }), 75);
  }
  EXPECT_EQ(folder.read("closed/x.ini"), "new");
  fs::permissions(closed, fs::perms::all);
}

TEST_F(FileContent, TheFolderLockFailsAfterItsTimeout) {
  const files::FolderLock held(folder.posdata());
  EXPECT_EQ(errorNumberOf([&] {
              const files::FolderLock second(folder.posdata(), std::chrono::milliseconds(20));
            }),
            70);
  const files::FolderLock missing(folder.path() / "none");  // a missing folder is no error
}

TEST_F(FileContent, EvenTheAdministratorCannotReplaceAReadOnlyFile) {
  folder.write("Posdata/FastTouchButtons.ini", "old");
  fs::permissions(path, fs::perms{0444});
  EXPECT_EQ(errorNumberOf([&] { replaceContent(path, "new"); }), 75);
  EXPECT_EQ(support::readFile(path), "old");
  EXPECT_EQ(errorNumberOf([&] { replaceContent(folder.path() / "none" / "x", "new"); }), 76);
  EXPECT_EQ(errorNumberOf([&] { replaceContent(folder.posdata(), "new"); }), 75);
}
