#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/profile/SettingsStore.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace fs = std::filesystem;

using profile::GetSetting;
using profile::SaveSetting;
using support::errorNumberOf;

namespace {

class Settings : public testing::Test {
 protected:
  fs::path file() const { return folder.settingsFolder() / "tavenor.ini"; }
  std::string stored() const { return support::readFile(file()).value_or("(no file)"); }

  support::ProgramFolder folder;
};

}  // namespace

TEST_F(Settings, NamesOfAHandWrittenFileMatchInAnyCase) {
  support::writeFile(file(), "\xEF\xBB\xBF; shop\r\n[comms]\r\nstorename=Demo\r\nOther= x\r\n");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"storename"), u"Demo");
  EXPECT_EQ(GetSetting(u"TAVENOR", u"COMMS", u"STORENAME", u"none"), u"Demo");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"other"), u" x");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"absent"), u"");
  EXPECT_EQ(GetSetting(u"unknown", u"comms", u"storename", u"none"), u"none");
  SaveSetting(u"tavenor", u"comms", u"other", u"y");
  EXPECT_EQ(stored(), "\xEF\xBB\xBF; shop\r\n[comms]\r\nstorename=Demo\r\nOther=y\r\n");
}

TEST_F(Settings, ValuesAreStoredAsPlainLinesAndReplacedInTheirLine) {
  SaveSetting(u"TAVENOR", u"COMMS", u"UPDATE", u"PROGRAMDATA");
  SaveSetting(u"tavenor", u"comms", u"FORMTOOPEN", u"UPDATEPOS");
  EXPECT_EQ(stored(), "[COMMS]\nUPDATE=PROGRAMDATA\nFORMTOOPEN=UPDATEPOS\n");

  support::writeFile(file(), "; shop\r\n[comms]\r\nstorename=Demo\r\n");
  SaveSetting(u"TAVENOR", u"COMMS", u"UPDATE", u"PROGRAMDATA");
  SaveSetting(u"TAVENOR", u"COMMS", u"STORENAME", u"Café");
  EXPECT_EQ(stored(), "; shop\r\n[comms]\r\nstorename=Caf\xC3\xA9\r\nUPDATE=PROGRAMDATA\r\n");
}

TEST_F(Settings, AnyTextComesBackExactly) {
  const std::u16string texts[] = {
      u"",
      u"  blanks round it\t ",
      u"\"quoted\"",
      u"'",
      u"C:\\Stores\\Demo=x;y",
      u"[comms]",
      u"two\r\nlines\nand \\n",
      u"\\\"marked\"",
      u"\\\"bad \\x escape\"",
      u"日本 \U0001F600",
      std::u16string(u"nul \0 here", 10),
      u"\x1A",
      std::u16string(1, 0xDC00) + u" half",
  };
  for (const std::u16string& text : texts) {
    SaveSetting(u"tavenor", u"comms", u"before", u"1");
    SaveSetting(u"tavenor", u"comms", u"text", text);
    SaveSetting(u"tavenor", u"comms", u"next", u"2");
    EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"text", u"default"), text);
    EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"next"), u"2");
  }
  // Texts that only look escaped are read unchanged.
  support::writeFile(file(), "[comms]\na=\\\"bad \\x\"\nb=\\\"\nc=\\\"\\u12\"\n");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"a"), u"\\\"bad \\x\"");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"b"), u"\\\"");
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"c"), u"\\\"\\u12\"");
}

TEST_F(Settings, AWriteThatFailsRaisesError75) {
  SaveSetting(u"tavenor", u"comms", u"storename", u"Demo");
  for (int step = 0; step < 3; ++step) {
    support::FileFaults faults;
    faults.cutAtChange(step);
    EXPECT_EQ(errorNumberOf([] { SaveSetting(u"tavenor", u"comms", u"storename", u"x"); }), 75);
    EXPECT_EQ(stored(), "[comms]\nstorename=Demo\n");
  }
  fs::permissions(file(), fs::perms{0444});
  EXPECT_EQ(errorNumberOf([] { SaveSetting(u"tavenor", u"comms", u"storename", u"x"); }), 75);
  fs::permissions(file(), fs::perms{0644});
  const std::string wide("\xFF\xFE[\0c\0]\0", 8);
  support::writeFile(file(), wide);
  EXPECT_EQ(errorNumberOf([] { SaveSetting(u"tavenor", u"comms", u"storename", u"x"); }), 75);
  EXPECT_EQ(stored(), wide);
  // The path of the settings folder is a file.
  fs::remove_all(folder.settingsFolder());
  support::writeFile(folder.settingsFolder(), "");
  EXPECT_EQ(errorNumberOf([] { SaveSetting(u"tavenor", u"comms", u"storename", u"x"); }), 75);
  EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"storename", u"none"), u"none");
  EXPECT_EQ(errorNumberOf([] { GetSetting(u"../x", u"comms", u"storename"); }), 5);
}

TEST_F(Settings, AreStoredBelowTheHomeFolderByDefault) {
  const char* const variable = ::getenv("HOME");
  const std::string home = variable == nullptr ? "/" : variable;
  ::setenv("HOME", folder.path().c_str(), 1);
  for (const char* config : {"", "relative"}) {
    ::setenv("XDG_CONFIG_HOME", config, 1);
    SaveSetting(u"Tavenor", u"comms", u"storename", u"Demo");
    EXPECT_EQ(folder.read(".config/program-settings/tavenor.ini"), "[comms]\nstorename=Demo\n");
    EXPECT_EQ(GetSetting(u"tavenor", u"comms", u"storename"), u"Demo");
    for (const char* created : {".config", ".config/program-settings"})
      EXPECT_EQ(fs::status(folder.path() / created).permissions(), fs::perms{0700});
  }
  ::setenv("HOME", home.c_str(), 1);
}
