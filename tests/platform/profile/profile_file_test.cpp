#include <gtest/gtest.h>

#include <QJsonArray>

#include "platform/files/ProgramFolder.h"
#include "platform/profile/ProfileFile.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"
#include "support/ReferenceTable.h"

namespace fs = std::filesystem;

using profile::GetPrivateProfileStringA;
using profile::WritePrivateProfileStringA;
using support::bytesField;

namespace {

constexpr std::size_t kBuffer = 1024;

/// One row of the table, set up in a program folder of its own.
class ProfileCase {
 public:
  explicit ProfileCase(const QJsonObject& row) : row_(row) {
    const std::string target = row["target"].toString().toStdString();
    if (target == "missing folder") path_ = folder_.path() / "none" / "case.ini";
    if (target == "no name") path_.clear();
    if (target == "a folder") fs::create_directory(path_);
    if (!row["file_hex"].isNull()) support::writeFile(path_, bytesField(row, "file_hex"));
    if (target == "read-only file") fs::permissions(path_, fs::perms{0444});
  }

  void check() const {
    for (const auto& value : row_["calls"].toArray()) {
      const QJsonObject call = value.toObject();
      EXPECT_EQ(
          WritePrivateProfileStringA(bytesField(call, "section_hex"), bytesField(call, "key_hex"),
                                     bytesField(call, "value_hex"), path_.u16string()),
          call["ok"].toBool());
    }
    if (row_.contains("after_hex")) checkFile();
    if (row_.contains("section_hex")) checkReading();
  }

 private:
  void checkFile() const {
    if (row_["after_hex"].isNull()) {
      EXPECT_FALSE(fs::is_regular_file(path_));
    } else {
      EXPECT_EQ(support::readFile(path_), bytesField(row_, "after_hex"));
    }
  }

  void checkReading() const {
    const std::string value =
        GetPrivateProfileStringA(bytesField(row_, "section_hex"), bytesField(row_, "key_hex"),
                                 bytesField(row_, "default_hex"), kBuffer, path_.u16string());
    EXPECT_EQ(value, bytesField(row_, "value_hex"));
    EXPECT_EQ(value.size(), static_cast<std::size_t>(row_["count"].toInt()));
  }

  QJsonObject row_;
  support::ProgramFolder folder_;
  fs::path path_ = folder_.path() / "case.ini";
};

class ProfileFile : public testing::Test {
 protected:
  std::string read(std::string_view section, std::string_view key) const {
    return GetPrivateProfileStringA(section, key, "dflt", kBuffer, path);
  }
  bool write(std::string_view section, std::string_view key, std::string_view value) const {
    return WritePrivateProfileStringA(section, key, value, path);
  }
  std::string after() const { return folder.read("Posdata/Touch.ini").value_or("(no file)"); }

  support::ProgramFolder folder;
  std::u16string path = files::programFolder() + u"\\posdata\\TOUCH.ini";
};

}  // namespace

TEST(ProfileTable, EveryRowHolds) {
  const auto rows = support::referenceRows("profile-cases.json");
  if (rows.empty()) GTEST_SKIP() << "no reference data";
  for (const QJsonObject& row : rows) {
    SCOPED_TRACE(support::idOf(row));
    ProfileCase(row).check();
  }
}

TEST_F(ProfileFile, UntouchedLinesStayByteForByte) {
  folder.write("Posdata/Touch.ini",
               "\r\n  ; top\n[A] words\r\n  J = 1  \r[S]\n\n K =old\nL='x'\n\n; about T\n[T]\nK=5");
  EXPECT_TRUE(write("s", "k", "new"));
  EXPECT_TRUE(write("S", "M", "added"));
  EXPECT_TRUE(write("T", "L", "6"));
  EXPECT_EQ(after(),
            "\r\n  ; top\n[A] words\r\n  J = 1  \r[S]\n\n K =new\nL='x'\nM=added\r\n\n; about "
            "T\n[T]\nK=5\r\nL=6\r\n");
}

TEST_F(ProfileFile, NamesFoldTheAccentedLettersOfTheCodePage) {
  folder.write("Posdata/Touch.ini", "[CAF\xC9]\r\nk\xE4se=7\r\n\x9AK=8\r\n");
  EXPECT_EQ(read("Caf\xE9", "K\xC4SE"), "7");
  EXPECT_EQ(read("caf\xE9", "\x8Ak"), "8");
  EXPECT_TRUE(write("Caf\xE9", "K\xC4SE", "9"));
  EXPECT_EQ(after(), "[CAF\xC9]\r\nk\xE4se=9\r\n\x9AK=8\r\n");
}

TEST_F(ProfileFile, AMarkOrALineWithoutEqualsHidesNoOtherKey) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK\r\nK=2\r\n");
  EXPECT_EQ(read("S", "K"), "2");
  folder.write("Posdata/Touch.ini", "\xEF\xBB\xBF[S]\r\nK=2\r\n[T]\r\nK=3\r\n");
  EXPECT_EQ(read("S", "K"), "dflt");
  EXPECT_EQ(read("T", "K"), "3");
}

TEST_F(ProfileFile, AWriteThatFailsGivesFalseAndLeavesTheFile) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK=old\r\n");
  for (int step = 0; step < 3; ++step) {
    support::FileFaults faults;
    faults.cutAtChange(step, 4);
    EXPECT_FALSE(write("S", "K", "new")) << step;
    EXPECT_EQ(after(), "[S]\r\nK=old\r\n") << step;
  }
  EXPECT_FALSE(WritePrivateProfileStringA("S", "K", "v", u""));
}

TEST_F(ProfileFile, OneThatMayNotBeReadGivesTheDefault) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK=1\r\n");
  fs::permissions(folder.posdata() / "Touch.ini", fs::perms{0});
  const support::AsOrdinaryUser user;
  EXPECT_EQ(read("S", "K"), "dflt");
  EXPECT_FALSE(write("S", "K", "2"));
}
