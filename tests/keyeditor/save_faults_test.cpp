// Saves and resets that are interrupted at each step, by a failing write or by killing the process.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/process/seam/ProcessEnd.h"
#include "support/FileFaults.h"
#include "support/Shop.h"

using support::killedAtChange;
using support::Shop;
using support::WindowDriver;

namespace fs = std::filesystem;

namespace {

struct Editor {
  const char* screen;
  const char* layout;
  int keys;
  const char* loadLarge;  // the setting LOAD_FASTMOVERS_LARGE
  std::u16string item;
  int changesAfterLayout;  // of the level's name: write, sync, rename
};

const Editor kLevelled{"frmMain", "FastMovers1.txt", 63, "0", support::entry(u"Tea", 77), 3};
const Editor kLarge{"frmMainBig", "FastMovers.txt", 108, "1", u"77        Tea", 0};

constexpr const char* kOldLayout = "the layout of old\r\n";
constexpr const char* kOldTouch = "[SETTINGS]\r\nSCREEN1=Counter\r\n";

class SaveFaults : public testing::TestWithParam<Editor> {
 protected:
  SaveFaults() {
    shop.folder.write("Posdata/Posconfig.ini",
                      std::string("[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=") + editor.loadLarge);
    shop.folder.write("Posdata/FastMovers2.txt", "another level's");
    user.emplace(shop.open(editor.screen));
    user->drop("MyButton1(5)", editor.item);
    save();
    full = layout();
  }

  void save() { user->click("cmdSave"); }
  std::string layout() const {
    return shop.folder.read(fs::path("Posdata") / editor.layout).value_or("(no file)");
  }
  void putOld() const {
    shop.folder.write(fs::path("Posdata") / editor.layout, kOldLayout);
    shop.writeTouchButtons(kOldTouch);
  }
  /// The offset of a key's line; the end of the file for the key after the last one.
  std::size_t offsetOfLine(int key) const {
    std::size_t at = 0;
    for (; key > 0; --key) at = full.find("\r\n", at) + 2;
    return at;
  }
  void expectOtherFilesUnchanged() const {
    EXPECT_EQ(shop.touchFile(), kOldTouch);
    EXPECT_EQ(shop.folder.read("Posdata/FastMovers2.txt"), "another level's");
  }
  std::vector<fs::path> leftovers() const {
    std::vector<fs::path> found;
    for (const auto& file : fs::directory_iterator(shop.folder.posdata()))
      if (file.path().filename().string().starts_with('.')) found.push_back(file.path());
    return found;
  }

  Editor editor = GetParam();
  Shop shop;
  std::optional<WindowDriver> user;
  std::string full;
};

}  // namespace

TEST_P(SaveFaults, AFailedWriteKeepsTheEarlierLinesAndEndsTheProgram) {
  for (int step = 0; step < editor.keys; ++step) {
    putOld();
    const auto bytes = static_cast<std::size_t>(step % 13);
    {
      support::FileFaults faults;
      faults.cutAtChange(step, bytes);
      save();
    }
    ASSERT_EQ(shop.failure(), 61) << step;
    EXPECT_EQ(shop.host.endStatus, 1);
    EXPECT_EQ(layout(), full.substr(0, offsetOfLine(step) + bytes)) << step;
    expectOtherFilesUnchanged();
    // The test's host keeps the screen alive after the program's end, for the next iteration.
    process::resetEnded();
    shop.host.failures.clear();
  }
  save();
  EXPECT_EQ(layout(), full);
}

TEST_P(SaveFaults, AFailureToWriteTheLevelNameIsIgnored) {
  for (int step = 0; step < editor.changesAfterLayout; ++step) {
    putOld();
    support::FileFaults faults;
    faults.cutAtChange(editor.keys + step, 5);
    save();
    EXPECT_EQ(shop.failure(), 0);
    EXPECT_EQ(layout(), full);
    expectOtherFilesUnchanged();
    EXPECT_TRUE(leftovers().empty());
  }
}

TEST_P(SaveFaults, AKilledProcessKeepsTheLinesAlreadyWritten) {
  const int steps = editor.keys + editor.changesAfterLayout;
  // One loop writes all lines, so every tenth line is enough; from the last ten on every step is
  // tried.
  for (int step = 0; step < steps; step += step + 10 < editor.keys ? 10 : 1) {
    putOld();
    ASSERT_TRUE(killedAtChange(step, [&] { save(); })) << step;
    EXPECT_EQ(layout(), full.substr(0, offsetOfLine(std::min(step, editor.keys)))) << step;
    expectOtherFilesUnchanged();
  }
  // A later save removes the temporary files that the interrupted writes of the level's name left,
  // but only those older than a minute, which no running program still uses.
  EXPECT_EQ(leftovers().size(), static_cast<std::size_t>(editor.changesAfterLayout));
  for (const fs::path& file : leftovers())
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::minutes(2));
  save();
  EXPECT_EQ(layout(), full);
  EXPECT_TRUE(leftovers().empty());
}

INSTANTIATE_TEST_SUITE_P(Editors, SaveFaults, testing::Values(kLevelled, kLarge),
                         [](const auto& editor) { return std::string(editor.param.screen); });

TEST(ResetFaults, AFailedDeleteLeavesTheKeysUnchanged) {
  Shop shop;
  WindowDriver user = shop.open();
  user.drop("MyButton1(5)", kLevelled.item);
  user.click("cmdSave");
  const auto full = shop.folder.read("Posdata/FastMovers1.txt");
  shop.host.answers = {process::kYes};
  EXPECT_TRUE(killedAtChange(0, [&] { user.click("cmdResetAll"); }));
  EXPECT_EQ(shop.folder.read("Posdata/FastMovers1.txt"), full);
  {
    support::FileFaults faults;
    faults.cutAtChange(0);
    user.click("cmdResetAll");
  }
  EXPECT_NE(shop.failure(), 0);
  EXPECT_EQ(shop.host.endStatus, 1);
  EXPECT_EQ(support::caption(user, "MyButton1(5)"), "Tea");
  EXPECT_EQ(shop.folder.read("Posdata/FastMovers1.txt"), full);
}
