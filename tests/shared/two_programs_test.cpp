// Two processes that add products to one store at the same time, each with its own `frmAddPlu`.

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "makestore/ShopStore.h"
#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/runtime/CodePage.h"
#include "shared/mdOpenDatabase.h"
#include "support/ProcessCopy.h"
#include "support/ProductSheet.h"

namespace {

namespace fs = std::filesystem;

constexpr int kAdds = 100;
constexpr int kFailed = 255;
constexpr int kSlots = 280;
constexpr int kNamed = 40;
constexpr std::int32_t kRowChanged = -2147217864;

/// The body of one program: adds `kAdds` products and returns how many it reported as added, or
/// `kFailed` after any error but that another program has changed the row.
int addAll(const std::string& prefix) {
  support::TestHost host;
  int added = 0;
  for (int i = 0; i < kAdds; ++i) {
    const std::string name = prefix + " " + std::to_string(i);
    const std::int32_t error = support::addProduct(host, runtime::fromUtf8(name)).error;
    if (error != 0 && error != kRowChanged) return kFailed;
    added += error == 0 ? 1 : 0;
  }
  return added;
}

/// The rows of a table by their first column, the id.
std::map<std::string, std::string> rowsById(jet::Database& database, std::u16string_view table) {
  std::map<std::string, std::string> rows;
  for (const std::string& line : jettest::linesOf(jettest::tableNamed(database, table)))
    rows[line.substr(0, line.find('\t'))] = line;
  return rows;
}

TEST(TwoPrograms, TwoProgramsThatAddProductsAtOnceNeverFillASlotTwice) {
  const jettest::Scratch scratch;
  const fs::path file = scratch.folder() / "MASTER.mdb";
  makestore::ShopOptions options;
  options.slots = kSlots;
  options.products = kNamed;
  makestore::shopStore(options).write(file);
  mdOpenDatabase::StoreFolder = jettest::wide(scratch.folder().string());

  const std::vector<int> added =
      support::statusesOfCopies({[] { return addAll("left"); }, [] { return addAll("right"); }});
  for (const int each : added) ASSERT_TRUE(each >= 0 && each <= kAdds) << each;
  EXPECT_GE(added[0] + added[1], kAdds);

  jet::Database database(file, u"the store", jet::Password{jettest::kStorePassword});
  const auto stock = rowsById(database, u"tblStock");
  const auto flags = rowsById(database, u"tblPlu");
  const std::string exported =
      jettest::outputOf("mdb-export -H '" + file.string() + "' tblStock 2>/dev/null");
  std::size_t named = 0;
  std::set<std::string> found;  // a slot that was filled twice has lost a name
  for (const auto& [id, line] : stock) {
    const std::string name = jettest::split(line, '\t').at(2);
    named += name == "\\N" ? 0 : 1;
    if (!name.starts_with("left ") && !name.starts_with("right ")) continue;
    EXPECT_TRUE(found.insert(name).second) << name << " twice";
    EXPECT_THAT(line, testing::HasSubstr("\t1.2500\t0\t"));
    // The fourth flag, SCALE, is not on the sheet.
    EXPECT_TRUE(flags.at(id).ends_with("\t1\t1\t1\t0\t1\t1"));
    EXPECT_NE(exported.find("\"" + name + "\""), std::string::npos) << name;
  }
  EXPECT_EQ(named, kNamed + found.size());
  EXPECT_EQ(found.size(), static_cast<std::size_t>(added[0] + added[1]));
  for (const char16_t* table : {u"tblStock", u"tblPlu"})
    EXPECT_EQ(jettest::indexProblems(jettest::tableNamed(database, table)),
              std::vector<std::string>());
  EXPECT_EQ(jettest::checkerVerdict(file), "sound");
}

}  // namespace
