#include <gtest/gtest.h>

#include "platform/jet/StoreFiles.h"
#include "support/FileFaults.h"
#include "support/ProgramFolder.h"

namespace {

using namespace jettest;
namespace fs = std::filesystem;

class Opening : public testing::Test {
 protected:
  void SetUp() override { store_ = scratch_.copy(referenceStore("corner").path); }

  Scratch scratch_;
  fs::path store_;
};

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
    EXPECT_EQ(support::failureOf([&] { update(database, table, scan->row().id(), {}); }),
              "-2147467259: Cannot update. Database or object is read-only.");
  }
  fs::permissions(store_, fs::perms::none);
  const support::AsOrdinaryUser user;
  const std::string failure = support::failureOf(
      [&] { const jet::Database database(store_, u"", jet::Password{kStorePassword}); });
  EXPECT_TRUE(failure.starts_with("-2147467259: The database engine cannot open the file '"));
}

TEST_F(Opening, ReadsFewPagesForOneRowByItsKey) {
  const support::FileFaults resetsSeam;
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
