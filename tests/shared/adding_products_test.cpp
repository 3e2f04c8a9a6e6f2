// Adds products to every kind of store with the real sheet, `frmAddPlu`.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "makestore/ShopStore.h"
#include "platform/jet/RandomUpdates.h"
#include "platform/jet/StoreFiles.h"
#include "platform/runtime/CodePage.h"
#include "shared/mdOpenDatabase.h"
#include "support/ProductSheet.h"

namespace {

namespace fs = std::filesystem;

constexpr int kMost = 30;
constexpr int kNoRecord = 3021;

class AddingProducts : public testing::Test {
 protected:
  /// Adds up to `kMost` products, each in a run of its own; returns the errors in order.
  std::vector<int> addMany(const fs::path& file) {
    mdOpenDatabase::StoreFolder = jettest::wide(file.parent_path().string());
    std::vector<int> errors;
    for (int i = 0; i < kMost; ++i) {
      const std::string name = "Added \u00e9 " + std::to_string(i * 37 % 100);
      const support::Added added = support::addProduct(host_, runtime::fromUtf8(name));
      if (added.error != 0) {
        errors.push_back(added.error);
        continue;
      }
      if (added.id == 0) break;
      EXPECT_TRUE(added_.emplace(std::to_string(added.id), name).second);
    }
    return errors;
  }

  /// Checks that the file is sound and has the added rows.
  void expectSound(const fs::path& file) const {
    jet::Database database(file, u"the store", jet::Password{jettest::kStorePassword});
    for (const char16_t* name : {u"tblStock", u"tblPlu"})
      EXPECT_EQ(jettest::indexProblems(jettest::tableNamed(database, name)),
                std::vector<std::string>());
    const jet::Table& stock = jettest::tableNamed(database, u"tblStock");
    const jet::ColumnIndex id = stock.columnNamed(u"id").value();
    const jet::ColumnIndex description = stock.columnNamed(u"description").value();
    std::size_t found = 0;
    const auto scan = stock.scan();
    while (scan->next()) {
      const auto added = added_.find(jettest::printed(scan->row().value(id)));
      if (added == added_.end()) continue;
      EXPECT_EQ(jettest::printed(scan->row().value(description)), added->second);
      ++found;
    }
    EXPECT_EQ(found, added_.size());
    EXPECT_EQ(jettest::checkerVerdict(file), "sound");
  }

  support::TestHost host_;
  std::map<std::string, std::string> added_;  ///< names by id
};

TEST_F(AddingProducts, KeepsEveryReferenceStoreSound) {
  for (const jettest::StoreFile& store : jettest::referenceStores()) {
    const std::string name = store.path.parent_path().filename();
    SCOPED_TRACE(name);
    added_.clear();
    const jettest::Scratch scratch;
    const fs::path file = scratch.copy(store.path);
    const std::vector<int> errors = addMany(file);
    // One store has a free slot without a row in tblPlu.
    EXPECT_EQ(errors, name == "short" ? std::vector<int>{kNoRecord} : std::vector<int>());
    EXPECT_EQ(added_.size(), name == "full" ? 0U : name == "short" ? kMost - 1U : kMost);
    expectSound(file);
  }
}

TEST_F(AddingProducts, KeepsStoresOfOtherShapesSound) {
  makestore::ShopOptions packed;
  packed.slots = 1800;  // a leaf that holds entries of 1300 equal keys
  packed.products = 400;
  packed.packedIndexes = true;
  packed.referenceMaps = true;
  packed.compressed = false;
  packed.moved = {17, 42, 300};
  packed.flagType = jet::ColumnType::Boolean;
  packed.freePages = 0;
  makestore::ShopOptions encoded;
  encoded.encodingKey = 0xABCDEF;
  encoded.departmentType = jet::ColumnType::Text;
  encoded.priceType = jet::ColumnType::Double;
  encoded.descriptionIndex = false;
  encoded.shuffled = true;
  for (const makestore::ShopOptions& options :
       {packed, encoded, makestore::cafeShop(), makestore::tightShop()}) {
    added_.clear();
    const jettest::Scratch scratch;
    const fs::path file = scratch.folder() / "MASTER.mdb";
    makestore::shopStore(options).write(file);
    EXPECT_EQ(addMany(file), std::vector<int>());
    EXPECT_EQ(added_.size(), static_cast<std::size_t>(kMost));
    expectSound(file);
  }
}

}  // namespace
