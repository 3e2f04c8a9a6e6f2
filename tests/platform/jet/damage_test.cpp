#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "makestore/ShopStore.h"
#include "platform/jet/StoreFiles.h"
#include "platform/runtime/RunTimeError.h"
#include "support/ProgramFolder.h"

namespace {

using namespace jettest;
namespace fs = std::filesystem;

std::vector<std::string> linesIn(const fs::path& file, std::u16string_view table) {
  jet::Database database(file, u"the file", jet::Password{kStorePassword});
  return linesOf(tableNamed(database, table));
}

/// Reads all content of a damaged file. Reading may end only with an error that names the file, or
/// with that of a wrong password.
class Damage : public testing::Test {
 protected:
  void read(const std::string& content, const StoreFile& origin) {
    const fs::path file = scratch_.folder() / "damaged.mdb";
    support::writeFile(file, content);
    const auto start = std::chrono::steady_clock::now();
    try {
      readEverything(file, origin.password);
      ++sound_;
    } catch (const runtime::RunTimeError& error) {
      ++refused_;
      const bool known = error.number() == -2147467259 || error.number() == -2147217843;
      EXPECT_TRUE(known) << error.what();
      EXPECT_TRUE(error.number() == -2147217843 ||
                  error.text().find(u"the file") != std::u16string::npos)
          << error.what();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  }

  /// A small plain file of each generation; in a long run, the small ones among the real files.
  std::vector<StoreFile> smallFiles() const {
    std::vector<StoreFile> files;
    for (const StoreFile& file : filesOfAllKinds())
      if (areRealFiles()
              ? fs::file_size(file.path) < 200'000
              : file.path.parent_path().filename() == "tight" || file.path.filename() == "jet3.mdb")
        files.push_back(file);
    return files;
  }

  Scratch scratch_;
  int sound_ = 0;
  int refused_ = 0;
};

TEST_F(Damage, ChangedBytesCauseNothingWorseThanAnError) {
  std::mt19937 random(4);
  for (const StoreFile& file : smallFiles()) {
    const std::string content = support::readFile(file.path).value();
    const std::size_t pageSize = content[0x14] == 0 ? 2048 : 4096;
    for (int round = 0; round < 250; ++round) {
      std::string damaged = content;
      for (unsigned bytes = 1 + random() % 4; bytes > 0; --bytes) {
        const std::size_t page = 1 + random() % (content.size() / pageSize - 1);
        const std::size_t within = random() % 3 == 0 ? random() % pageSize : random() % 80;
        constexpr char kValues[] = {'\0', '\1', '\x7f', '\x80', '\xff'};
        damaged[page * pageSize + within] =
            random() % 2 == 0 ? kValues[random() % 5] : static_cast<char>(random());
      }
      SCOPED_TRACE(file.path.string() + " round " + std::to_string(round));
      read(damaged, file);
    }
  }
  // Both happened, so the sweep hits structures and data.
  EXPECT_GT(sound_, 50);
  EXPECT_GT(refused_, 50);
}

TEST_F(Damage, CutsAndExchangedPagesCauseNothingWorseThanAnError) {
  std::mt19937 random(5);
  for (const StoreFile& file : smallFiles()) {
    const std::string content = support::readFile(file.path).value();
    const std::size_t pageSize = content[0x14] == 0 ? 2048 : 4096;
    for (int round = 0; round < 60; ++round) {
      SCOPED_TRACE(file.path.string() + " round " + std::to_string(round));
      read(content.substr(0, random() % content.size()), file);
      std::string exchanged = content;
      const std::size_t pages = content.size() / pageSize;
      exchanged.replace((1 + random() % (pages - 1)) * pageSize, pageSize,
                        content.substr((random() % pages) * pageSize, pageSize));
      read(exchanged, file);
    }
  }
  EXPECT_GT(refused_, 100);
}

/// A truncated copy has lost the rows after its end. Reading a table that lacks rows must fail
/// instead of returning a shorter table.
TEST_F(Damage, ACutFileNeverReadsAsAShorterTable) {
  for (const bool referenceMaps : {false, true}) {
    makestore::ShopOptions options;
    options.slots = 200;
    options.referenceMaps = referenceMaps;
    const fs::path full = scratch_.folder() / "full.mdb";
    makestore::shopStore(options).write(full);
    const std::string content = support::readFile(full).value();
    const fs::path cut = scratch_.folder() / "cut.mdb";
    int refused = 0;
    for (const char16_t* name : {u"tblStock", u"tblPlu", u"tblDepartment"}) {
      const std::vector<std::string> lines = linesIn(full, name);
      for (std::size_t size = content.size(); size > 4096; size -= 2048) {
        support::writeFile(cut, content.substr(0, size));
        try {
          EXPECT_EQ(linesIn(cut, name), lines) << narrow(name) << ' ' << size;
        } catch (const runtime::RunTimeError&) {
          ++refused;
        }
      }
    }
    EXPECT_GT(refused, 50);
  }
}

}  // namespace
