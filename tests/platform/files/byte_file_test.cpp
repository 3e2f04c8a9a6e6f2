#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <thread>

#include "platform/files/ByteFile.h"
#include "support/FileFaults.h"
#include "support/ProcessCopy.h"
#include "support/ProgramFolder.h"

namespace fs = std::filesystem;

using files::ByteFile;
using files::FileError;
using files::FileProblem;
using support::errorNumberOf;
using Access = files::ByteFile::Access;

namespace {

std::span<const std::uint8_t> bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

FileProblem problemOf(const fs::path& path, Access access) {
  try {
    ByteFile file(path, access);
  } catch (const FileError& error) {
    EXPECT_EQ(error.path(), path);
    EXPECT_FALSE(error.systemReason().empty());
    return error.problem();
  }
  return FileProblem::Other;
}

constexpr std::chrono::milliseconds kShort{30};

class ByteFileTest : public testing::Test {
 protected:
  const support::ProgramFolder folder;
  const fs::path path = folder.path() / "store.mdb";
};

}  // namespace

TEST_F(ByteFileTest, ReadsAndWritesAtAnyOffset) {
  ByteFile file(path, Access::Create);
  file.writeAt(4, bytesOf("page"));
  file.sync();
  EXPECT_EQ(file.size(), 8U);
  std::array<std::uint8_t, 6> read{};
  EXPECT_EQ(file.readAt(5, read), 3U);
  EXPECT_EQ(read[2], 'e');
  EXPECT_EQ(file.readAt(100, read), 0U);
  file.close();
  EXPECT_EQ(support::readFile(path), std::string("\0\0\0\0page", 8));

  ByteFile reader(path, Access::ReadOnly);
  EXPECT_EQ(errorNumberOf([&] { reader.writeAt(0, bytesOf("x")); }), 70);
}

TEST_F(ByteFileTest, AWriteBeyondTheSizeLimitRaisesDiskFull) {
  const int error = support::statusOfCopy([&] {
    const rlimit limit{6, 6};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ByteFile file(path, Access::Create);
    return errorNumberOf([&] { file.writeAt(0, bytesOf("too long")); });
  });
  EXPECT_EQ(error, 61);
  EXPECT_EQ(support::readFile(path), "too lo");
}

TEST_F(ByteFileTest, AFailedOpenReportsItsReason) {
  EXPECT_EQ(problemOf(path, Access::ReadWrite), FileProblem::Missing);
  EXPECT_EQ(problemOf(folder.path() / "none" / "store.mdb", Access::ReadOnly),
            FileProblem::FolderMissing);
  EXPECT_EQ(problemOf(folder.posdata(), Access::ReadOnly), FileProblem::NotAFile);
  folder.write("store.mdb", "");
  fs::permissions(path, fs::perms{0444});
  EXPECT_EQ(problemOf(path, Access::ReadWrite), FileProblem::NoPermission);
  fs::permissions(path, fs::perms{0});
  const support::AsOrdinaryUser user;
  EXPECT_EQ(problemOf(path, Access::ReadOnly), FileProblem::NoPermission);
}

TEST_F(ByteFileTest, LocksExcludeOtherOpeningsAndWaitUntilTheirTimeout) {
  folder.write("store.mdb", "");
  ByteFile one(path, Access::ReadWrite);
  ByteFile two(path, Access::ReadWrite);
  one.lockShared();
  two.lockShared();
  EXPECT_EQ(errorNumberOf([&] { one.lockExclusive(kShort); }), 70);
  // The failed wait kept its shared lock: the other one is still excluded.
  EXPECT_EQ(errorNumberOf([&] { two.lockExclusive(kShort); }), 70);
  one.unlock();
  two.lockExclusive(kShort);
  try {
    one.lockShared(kShort);
    FAIL() << "a held file was locked";
  } catch (const FileError& error) {
    EXPECT_EQ(error.problem(), FileProblem::Held);
  }
  two.close();
  one.lockExclusive(kShort);
}

/// Locks all of a file's bytes, as other programs do.
bool lockBytes(int descriptor, short type) {
  struct stat status {};
  ::fstat(descriptor, &status);
  struct flock range {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  range.l_len = status.st_size;
  return ::fcntl(descriptor, F_SETLK, &range) == 0;
}

TEST_F(ByteFileTest, LocksLeaveTheFilesOwnBytesToOtherPrograms) {
  folder.write("store.mdb", "old bytes");
  ByteFile file(path, Access::ReadWrite);
  file.lockExclusive();
  const int done = support::statusOfCopy([&] {
    const int other = ::open(path.c_str(), O_RDWR);
    std::array<char, 3> read{};
    return lockBytes(other, F_WRLCK) && ::pread(other, read.data(), 3, 0) == 3 && read[0] == 'o' &&
           ::pwrite(other, "new", 3, 0) == 3;
  });
  EXPECT_EQ(done, 1);
  EXPECT_EQ(support::readFile(path), "new bytes");
}

TEST_F(ByteFileTest, LocksWaitWhileAnotherProgramHoldsAWriteLock) {
  folder.write("store.mdb", "bytes");
  const int other = ::open(path.c_str(), O_RDWR);
  const auto errorsOfAnotherProgram = [&] {
    return support::statusOfCopy([&] {
      ByteFile file(path, Access::ReadWrite);
      return errorNumberOf([&] { file.lockShared(kShort); }) +
             errorNumberOf([&] { file.lockExclusive(kShort); });
    });
  };
  ASSERT_TRUE(lockBytes(other, F_WRLCK));
  EXPECT_EQ(errorsOfAnotherProgram(), 70 + 70);
  ASSERT_TRUE(lockBytes(other, F_RDLCK));  // a read lock excludes no other
  EXPECT_EQ(errorsOfAnotherProgram(), 0);
  ::close(other);
}

TEST_F(ByteFileTest, AWaitEndsWhenTheLockDoes) {
  folder.write("store.mdb", "");
  ByteFile held(path, Access::ReadWrite);
  held.lockExclusive();
  std::thread holder([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    held.unlock();
  });
  ByteFile file(path, Access::ReadWrite);
  EXPECT_EQ(errorNumberOf([&] { file.lockShared(std::chrono::milliseconds{0}); }), 70);
  file.lockExclusive();
  holder.join();
}
