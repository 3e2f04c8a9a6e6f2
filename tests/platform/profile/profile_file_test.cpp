#include <gtest/gtest.h>
#include <malloc.h>

#include <QJsonArray>
#include <algorithm>
#include <cstdlib>
#include <new>

#include "platform/files/ProgramFolder.h"
#include "platform/files/seam/FaultSeam.h"
#include "platform/profile/ProfileFile.h"
#include "platform/profile/SettingsStore.h"
#include "platform/runtime/CodePage.h"
#include "support/FileFaults.h"
#include "support/ProcessCopy.h"
#include "support/ProgramFolder.h"
#include "support/ReferenceTable.h"

namespace fs = std::filesystem;

using profile::GetPrivateProfileStringA;
using profile::WritePrivateProfileStringA;
using support::bytesField;

namespace {

std::size_t allocated = 0;
std::size_t mostAllocated = 0;

}  // namespace

// Counts the bytes that this program has allocated.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* const memory = std::malloc(size);
  allocated += ::malloc_usable_size(memory);
  mostAllocated = std::max(mostAllocated, allocated);
  return memory;
}
void* operator new(std::size_t size) {
  void* const memory = operator new(size, std::nothrow);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept {
  allocated -= ::malloc_usable_size(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  operator delete(memory);
}

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

TEST(ProfileTable, MatchesTheReferenceTable) {
  const auto rows = support::referenceRows("profile-cases.json");
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

TEST_F(ProfileFile, AByteOrderMarkHidesOnlyTheFirstSection) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK\r\nK=2\r\n");
  EXPECT_EQ(read("S", "K"), "2");
  folder.write("Posdata/Touch.ini", "\xEF\xBB\xBF[S]\r\nK=2\r\n[T]\r\nK=3\r\n");
  EXPECT_EQ(read("S", "K"), "dflt");
  EXPECT_EQ(read("T", "K"), "3");
}

TEST_F(ProfileFile, AFailedWriteReturnsFalseAndDoesNotChangeTheFile) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK=old\r\n");
  for (int step = 0; step < 3; ++step) {
    support::FileFaults faults;
    faults.cutAtChange(step, 4);
    EXPECT_FALSE(write("S", "K", "new")) << step;
    EXPECT_EQ(after(), "[S]\r\nK=old\r\n") << step;
  }
  EXPECT_FALSE(WritePrivateProfileStringA("S", "K", "v", u""));
}

TEST_F(ProfileFile, AnUnreadableFileReturnsTheDefault) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK=1\r\n");
  fs::permissions(folder.posdata() / "Touch.ini", fs::perms{0});
  const support::AsOrdinaryUser user;
  EXPECT_EQ(read("S", "K"), "dflt");
  EXPECT_FALSE(write("S", "K", "2"));
}

TEST_F(ProfileFile, AFileInUtf16IsNeitherReadNorChanged) {
  for (const std::string& text : {std::string("\xFF\xFE[\0S\0]\0", 8), std::string("[\0S\0]\0", 6),
                                  std::string("\xA9\x03\xBC\x03\r\0\n\0[\0S\0]\0", 14)}) {
    folder.write("Posdata/Touch.ini", text);
    EXPECT_FALSE(write("S", "K", "1"));
    EXPECT_EQ(read("S", "K"), "dflt");
    EXPECT_EQ(after(), text);
  }
}

TEST_F(ProfileFile, TheTwoCallsNeverThrow) {
  folder.write("Posdata/Touch.ini", "[S]\r\nK=1\r\n");
  files::setFaultSeam([](const files::FileStep&) -> std::size_t { throw std::bad_alloc(); });
  EXPECT_EQ(read("S", "K"), "dflt");
  EXPECT_FALSE(write("S", "K", "2"));
  files::setFaultSeam({});
}

TEST_F(ProfileFile, NeedsAtMostFourTimesItsSizeInMemory) {
  constexpr std::size_t kSize = 2U << 20U;
  const std::string line = "[S" + std::string(kSize / 2, 'x');
  for (const std::string& text : {std::string(kSize, '\n'), line + "\n" + line + "=1\n",
                                  "[S]\nK=" + std::string(kSize, 'x')}) {
    folder.write("Posdata/Touch.ini", text);
    support::writeFile(folder.settingsFolder() / "tavenor.ini", text);
    const auto most = [](const auto& act) {
      const std::size_t before = mostAllocated = allocated;
      act();
      return mostAllocated - before;
    };
    EXPECT_LE(most([&] { read("S", "K"); }), 4 * text.size());
    EXPECT_LE(most([&] { EXPECT_TRUE(write("S", "K", "1")); }), 4 * text.size());
    EXPECT_LE(most([&] { profile::GetSetting(u"tavenor", u"S", u"K"); }), 4 * text.size());
    EXPECT_LE(most([&] { profile::SaveSetting(u"tavenor", u"S", u"K", u"1"); }), 4 * text.size());
  }
}

TEST_F(ProfileFile, TwoProgramsThatWriteAtOnceLoseNoValue) {
  constexpr int kWrites = 500;
  const auto names = [](const char* program, int i) { return program + std::to_string(i); };
  const auto program = [&](const char* name) {
    return [&, name] {
      bool good = true;
      for (int i = 0; i < kWrites; ++i) {
        const std::string key = names(name, i);
        good = write("S", key, "1") && good;
        profile::SaveSetting(u"tavenor", u"comms", runtime::fromUtf8(key), u"1");
      }
      return good ? 0 : 1;
    };
  };
  EXPECT_EQ(support::statusesOfCopies({program("left"), program("right")}), std::vector(2, 0));
  int lost = 0;
  for (const char* name : {"left", "right"})
    for (int i = 0; i < kWrites; ++i) {
      const std::string key = names(name, i);
      if (read("S", key) != "1") ++lost;
      if (profile::GetSetting(u"tavenor", u"comms", runtime::fromUtf8(key)) != u"1") ++lost;
    }
  EXPECT_EQ(lost, 0);
}
