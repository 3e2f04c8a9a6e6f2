#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <vector>

#include "platform/files/FileSystemObject.h"
#include "platform/files/InputFile.h"
#include "platform/files/Kill.h"
#include "platform/files/OutputFile.h"
#include "platform/files/ProgramFolder.h"
#include "platform/runtime/RunTimeError.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

using support::errorNumberOf;
using testing::ElementsAre;

namespace fs = std::filesystem;

namespace {

class SequentialFile : public testing::Test {
 protected:
  std::u16string inPosdata(std::u16string_view name) const {
    return files::programFolder() + u"\\Posdata\\" + std::u16string(name);
  }
  int errorOfOpening(std::u16string_view name) const {
    return errorNumberOf([&] { files::InputFile file(inPosdata(name)); });
  }
  int errorOfWriting(std::u16string_view name) const {
    return errorNumberOf([&] { files::OutputFile file(inPosdata(name)); });
  }
  int errorOfDeleting(std::u16string_view name) const {
    return errorNumberOf([&] { files::kill(inPosdata(name)); });
  }
  std::vector<std::u16string> linesOf(std::string_view bytes) const {
    folder.write("Posdata/lines.txt", bytes);
    files::InputFile file(inPosdata(u"lines.txt"));
    std::vector<std::u16string> lines;
    while (errorNumberOf([&] { lines.push_back(file.lineInput()); }) != 62) {
    }
    return lines;
  }

  support::ProgramFolder folder;
};

}  // namespace

TEST_F(SequentialFile, LinesEndAtCrOrCrLfButNotAtLf) {
  EXPECT_THAT(linesOf("a\r\nb\rc\nd\r\n"), ElementsAre(u"a", u"b", u"c\nd"));
  EXPECT_THAT(linesOf("a\r\r\n\n\r"), ElementsAre(u"a", u"", u"\n"));
  EXPECT_THAT(linesOf("last"), ElementsAre(u"last"));
  EXPECT_THAT(linesOf(""), ElementsAre());
  EXPECT_THAT(linesOf(std::string_view("\0x\x1A"
                                       "y\x80\r\n",
                                       7)),
              ElementsAre(std::u16string(u"\0x\x1Ay€", 5)));
}

TEST_F(SequentialFile, ACrLfAcrossTwoBlocksIsOneLineEnd) {
  // The CR is the last byte of a block of any power of two, the LF the first of the next one.
  for (const std::size_t length : {511U, 4095U, 16'383U, 65'535U}) {
    const std::string line(length, 'x');
    EXPECT_THAT(linesOf(line + "\r\nb\r\n"),
                ElementsAre(std::u16string(line.begin(), line.end()), u"b"));
  }
}

TEST_F(SequentialFile, ALineAboveTheLimitRaisesOutOfMemory) {
  folder.write("Posdata/huge.txt", std::string(files::InputFile::kLineLimit + 1, 'x'));
  files::InputFile file(inPosdata(u"huge.txt"));
  EXPECT_EQ(errorNumberOf([&] { file.lineInput(); }), 7);
}

TEST_F(SequentialFile, OpeningForOutputEmptiesTheFileAndPrintWritesWindows1252) {
  folder.write("Posdata/FastMovers1.txt", "old content");
  files::OutputFile file(inPosdata(u"fastmovers1.TXT"));
  EXPECT_EQ(folder.read("Posdata/FastMovers1.txt"), "");
  file.print(u"Café, 7 €");
  file.print(u"日");
  file.close();
  EXPECT_EQ(folder.read("Posdata/FastMovers1.txt"), "Caf\xE9, 7 \x80\r\n?\r\n");
  EXPECT_EQ(errorNumberOf([&] { file.print(u"late"); }), 54);
}

TEST_F(SequentialFile, AFullDiskStopsInTheMiddleOfALine) {
  support::FileFaults faults;
  faults.cutAtChange(1, 3);
  files::OutputFile file(inPosdata(u"FastMovers1.txt"));
  file.print(u"first");
  EXPECT_EQ(errorNumberOf([&] { file.print(u"second"); }), 61);
  file.close();
  EXPECT_EQ(folder.read("Posdata/FastMovers1.txt"), "first\r\nsec");
}

TEST_F(SequentialFile, AFileTruncatedWhileReadEndsTheLine) {
  folder.write("Posdata/lines.txt", "abcdef\r\nnext\r\n");
  support::FileFaults faults;
  faults.endFilesAt(4);
  files::InputFile file(inPosdata(u"lines.txt"));
  EXPECT_EQ(file.lineInput(), u"abcd");
  EXPECT_EQ(errorNumberOf([&] { file.lineInput(); }), 62);
}

TEST_F(SequentialFile, FilesThatCannotBeOpenedRaiseTheirOwnErrors) {
  EXPECT_EQ(errorOfOpening(u"none.txt"), 53);
  EXPECT_EQ(errorOfOpening(u"none\\none.txt"), 76);
  EXPECT_EQ(errorOfWriting(u"none\\none.txt"), 76);
  EXPECT_EQ(errorOfDeleting(u"none.txt"), 53);
  EXPECT_EQ(errorOfDeleting(u"none\\none.txt"), 76);

  fs::create_directory(folder.posdata() / "dir.txt");
  ASSERT_EQ(::mkfifo((folder.posdata() / "pipe.txt").c_str(), 0666), 0);
  for (const std::u16string_view name : {u"dir.txt", u"pipe.txt"}) {
    EXPECT_EQ(errorOfOpening(name), 75);
    EXPECT_EQ(errorOfWriting(name), 75);
  }
  EXPECT_EQ(errorOfDeleting(u"dir.txt"), 75);

  folder.write("Posdata/plain.txt", "kept");
  EXPECT_EQ(errorOfOpening(u"plain.txt\\below.txt"), 76);
}

TEST_F(SequentialFile, PermissionsAreRespectedAndAReadOnlyFileIsNotDeleted) {
  folder.write("Posdata/locked.txt", "kept");
  folder.write("Posdata/secret.txt", "kept");
  fs::permissions(folder.posdata() / "locked.txt", fs::perms{0444});
  fs::permissions(folder.posdata() / "secret.txt", fs::perms{0});
  EXPECT_EQ(errorOfWriting(u"locked.txt"), 75);
  EXPECT_EQ(errorOfDeleting(u"locked.txt"), 75);
  {
    const support::AsOrdinaryUser user;
    EXPECT_EQ(errorOfOpening(u"secret.txt"), 70);
  }
  fs::permissions(folder.posdata(), fs::perms{0555});
  {
    const support::AsOrdinaryUser user;
    EXPECT_EQ(errorOfWriting(u"new.txt"), 75);
    EXPECT_EQ(errorOfDeleting(u"locked.txt"), 75);
  }
  EXPECT_EQ(folder.read("Posdata/locked.txt"), "kept");
  fs::permissions(folder.posdata(), fs::perms::all);
}

TEST_F(SequentialFile, FileExistsIsTrueOnlyForFilesAndFalseAfterKill) {
  const Scripting::FileSystemObject fso;
  folder.write("Posdata/FastMovers2.txt", "");
  fs::create_directory(folder.posdata() / "sub");
  EXPECT_TRUE(fso.FileExists(inPosdata(u"fastmovers2.txt")));
  EXPECT_FALSE(fso.FileExists(inPosdata(u"sub")));
  EXPECT_FALSE(fso.FileExists(inPosdata(u"none")));
  files::kill(inPosdata(u"Fastmovers2.txt"));
  EXPECT_FALSE(fso.FileExists(inPosdata(u"fastmovers2.txt")));
}
