#include <fcntl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "platform/files/ByteFile.h"
#include "platform/jet/StoreFiles.h"
#include "platform/runtime/RunTimeError.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace {

using namespace jettest;
namespace fs = std::filesystem;

/// Number and text of the error that a function raises; empty for none.
template <class Use>
std::string errorOf(Use use) {
  try {
    use();
    return {};
  } catch (const runtime::RunTimeError& error) {
    return std::to_string(error.number()) + " " + narrow(error.text());
  }
}

/// The same for opening a file as "S:\M.mdb".
std::string openingError(const fs::path& file, std::u16string_view password = kStorePassword) {
  return errorOf([&] { jet::Database(file, u"S:\\M.mdb", jet::Password{password}); });
}

class Opening : public testing::Test {
 protected:
  void SetUp() override { store_ = scratch_.copy(referenceStore("corner").path); }

  Scratch scratch_;
  fs::path store_;
};

TEST_F(Opening, FailsWithTheEnginesTexts) {
  EXPECT_EQ(openingError(store_), "");
  EXPECT_EQ(openingError(store_, u""), "-2147217843 Not a valid password.");
  EXPECT_EQ(openingError(store_, u"W7RT3Q8814Z"), "-2147217843 Not a valid password.");
  EXPECT_EQ(openingError(scratch_.folder() / "none.mdb"),
            "-2147467259 Could not find file 'S:\\M.mdb'.");
  EXPECT_EQ(openingError(scratch_.folder() / "no folder" / "M.mdb"),
            "-2147467259 'S:\\M.mdb' is not a valid path.  Make sure that the path name is spelled "
            "correctly and that you are connected to the server on which the file resides.");
  const std::string unrecognized = "-2147467259 Unrecognized database format 'S:\\M.mdb'.";
  const fs::path other = scratch_.folder() / "other.mdb";
  std::ofstream(other) << "";
  EXPECT_EQ(openingError(other), unrecognized);
  std::ofstream(other) << std::string(20000, 'x');
  EXPECT_EQ(openingError(other), unrecognized);
  fs::copy_file(store_, other, fs::copy_options::overwrite_existing);
  fs::resize_file(other, 9000);
  EXPECT_EQ(openingError(other), unrecognized);
}

TEST_F(Opening, SharesTheFileWithReadersButNotWithAnExclusiveHolder) {
  jet::Database first(store_, u"", jet::Password{kStorePassword});
  jet::Database second(store_, u"", jet::Password{kStorePassword});
  EXPECT_TRUE(second.find(u"tblStock"));
  const fs::path held = scratch_.folder() / "held.mdb";
  fs::copy_file(store_, held);
  files::ByteFile holder(held, files::ByteFile::Access::ReadWrite);
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_len = 1;
  ASSERT_EQ(::fcntl(holder.descriptor(), F_OFD_SETLK, &range), 0);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(openingError(held), "-2147467259 Could not use 'S:\\M.mdb'; file already in use.");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds{5});
  range.l_type = F_RDLCK;
  ASSERT_EQ(::fcntl(holder.descriptor(), F_OFD_SETLK, &range), 0);
  EXPECT_EQ(openingError(held), "");
}

TEST_F(Opening, AcceptsAReadOnlyFileAndRefusesAnUnreadableOne) {
  fs::permissions(scratch_.folder(),
                  fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read |
                      fs::perms::others_exec,
                  fs::perm_options::add);
  fs::permissions(store_, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  {
    const support::AsOrdinaryUser user;
    jet::Database database(store_, u"", jet::Password{kStorePassword});
    const jet::Table& table = tableNamed(database, u"tblPlu");
    const auto scan = table.scan();
    ASSERT_TRUE(scan->next());
    EXPECT_EQ(errorOf([&] { update(database, table, scan->row().id(), {}); }),
              "-2147467259 Cannot update. Database or object is read-only.");
  }
  fs::permissions(store_, fs::perms::none);
  const support::AsOrdinaryUser user;
  EXPECT_EQ(openingError(store_).substr(0, 54),
            "-2147467259 The database engine cannot open the file '");
}

TEST_F(Opening, ReadsFewPagesForOneRowByItsKey) {
  support::FileFaults faults;
  int reads = 0;
  files::setFaultSeam([&](const files::FileStep& step) {
    if (step.kind == files::FileStep::Kind::Read) ++reads;
    return step.size;
  });
  jet::Database database(store_, u"", jet::Password{kStorePassword});
  const jet::Table& table = tableNamed(database, u"tblStock");
  const auto walk = table.walk(table.indexOn({u"id"}).value(), {.equal = {150}});
  EXPECT_TRUE(walk->next());
  EXPECT_FALSE(walk->next());
  EXPECT_LE(reads, 10);
}

}  // namespace
