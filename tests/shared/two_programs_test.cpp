// Two processes that add products to one store at the same time, each with its own `frmAddPlu`.

#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <sstream>
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
constexpr int kSlots = 280;
constexpr int kNamed = 40;
constexpr std::int32_t kRowChanged = -2147217864;

/// The body of one program: adds `kAdds` products and writes the outcome of each as a line of
/// `report`.
int addAll(const std::string& prefix, const fs::path& report) {
  std::ofstream lines(report);
  support::TestHost host;
  for (int i = 0; i < kAdds; ++i) {
    const std::string name = prefix + " " + std::to_string(i);
    const support::Added added = support::addProduct(host, runtime::fromUtf8(name));
    lines << added.error << ' ' << added.id << ' ' << name << std::endl;
  }
  return 0;
}

struct Add {
  int error = 0;
  std::int32_t id = 0;
  std::string name;
};

std::vector<Add> readReport(const fs::path& report) {
  std::vector<Add> adds;
  std::ifstream lines(report);
  for (std::string line; std::getline(lines, line);) {
    Add& add = adds.emplace_back();
    std::istringstream words(line);
    words >> add.error >> add.id >> std::ws;
    std::getline(words, add.name);
  }
  return adds;
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

  const auto program = [&](const char* name) {
    return [&, name] { return addAll(name, scratch.folder() / name); };
  };
  ASSERT_EQ(support::statusesOfCopies({program("left"), program("right")}), std::vector(2, 0));

  std::map<std::int32_t, std::string> filled;
  for (const char* name : {"left", "right"}) {
    const std::vector<Add> adds = readReport(scratch.folder() / name);
    ASSERT_EQ(adds.size(), static_cast<std::size_t>(kAdds));
    for (const Add& add : adds) {
      EXPECT_TRUE(add.error == 0 || add.error == kRowChanged) << add.error;
      if (add.error != 0) continue;
      EXPECT_TRUE(filled.emplace(add.id, add.name).second) << add.id << " twice";
    }
  }
  EXPECT_GE(filled.size(), static_cast<std::size_t>(kAdds));

  jet::Database database(file, u"the store", jet::Password{jettest::kStorePassword});
  const auto stock = rowsById(database, u"tblStock");
  const auto flags = rowsById(database, u"tblPlu");
  std::size_t named = 0;
  for (const auto& [id, line] : stock) named += jettest::split(line, '\t').at(2) == "\\N" ? 0 : 1;
  EXPECT_EQ(named, kNamed + filled.size());
  for (const auto& [id, name] : filled) {
    EXPECT_THAT(stock.at(std::to_string(id)), testing::HasSubstr("\t" + name + "\t1.2500\t0\t"));
    // The fourth flag, SCALE, is not on the sheet.
    EXPECT_TRUE(flags.at(std::to_string(id)).ends_with("\t1\t1\t1\t0\t1\t1"));
  }
  for (const char16_t* table : {u"tblStock", u"tblPlu"})
    EXPECT_EQ(jettest::indexProblems(jettest::tableNamed(database, table)),
              std::vector<std::string>());
  const std::string exported =
      jettest::outputOf("mdb-export -H '" + file.string() + "' tblStock 2>/dev/null");
  for (const auto& [id, name] : filled)
    EXPECT_NE(exported.find("\"" + name + "\""), std::string::npos) << name;
  EXPECT_EQ(jettest::checkerVerdict(file), "sound");
}

}  // namespace
