// Stores that the tool makes, checked by readers that share no code with it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "makestore/ShopStore.h"
#include "platform/jet/StoreFiles.h"

namespace {

using jettest::checkerOutput;
using jettest::checkerVerdict;
using jettest::split;
using testing::HasSubstr;

/// A row by the columns' names.
using Row = std::map<std::string, std::string>;

class ShopStoreTest : public testing::Test {
 protected:
  /// Runs the tool; returns its output.
  std::string make(const std::string& options, int* status = nullptr) {
    return jettest::outputOf(
        std::string(MAKESTORE_TOOL) + " '" + file_.string() + "' " + options + " 2>&1", status);
  }
  /// A table's rows by id, nulls as \N; two readers must agree on how many there are.
  std::map<int, Row> rows(const std::string& table) {
    const std::string command = "mdb-export -Q -0 '\\N' -d '\t' '" + file_.string() + "' " + table;
    const std::vector<std::string> lines = split(jettest::outputOf(command), '\n');
    EXPECT_EQ(lines.size(), split(checkerOutput("--dump " + table, file_), '\n').size());
    std::map<int, Row> byId;
    const std::vector<std::string> names = split(lines.at(0), '\t');
    for (std::size_t i = 1; i < lines.size(); ++i) {
      const std::vector<std::string> cells = split(lines[i], '\t');
      Row row;
      for (std::size_t k = 0; k < names.size(); ++k)
        row[names[k]] = k < cells.size() ? cells[k] : "";
      byId[std::stoi(row.at("id"))] = row;
    }
    return byId;
  }
  /// Ids of the slots without a name.
  std::set<int> freeSlots() {
    std::set<int> ids;
    for (const auto& [id, row] : rows("tblStock"))
      if (row.at("description") == "\\N") ids.insert(id);
    return ids;
  }
  std::string bytes() const { return jettest::outputOf("cat '" + file_.string() + "'"); }

  jettest::Scratch scratch_;
  std::filesystem::path file_ = scratch_.folder() / "shop.mdb";
};

TEST_F(ShopStoreTest, DemoIsAPlausibleShop) {
  ASSERT_EQ(make(""), "");
  EXPECT_EQ(checkerVerdict(file_), "sound");
  EXPECT_EQ(checkerOutput("--password", file_), "w7rt3q8814Z\n");
  EXPECT_THAT(checkerOutput("--queries", file_),
              HasSubstr("SELECT tblStock.id AS ID, tblStock.description AS DESCRIPTION, "
                        "tblPlu.barcode, tblDepartment.description AS deptname\n"
                        "FROM (tblStock INNER JOIN tblPlu ON tblStock.id = tblPlu.id) LEFT JOIN "
                        "tblDepartment ON tblStock.deptid = tblDepartment.id;"));
  const std::map<int, Row> stock = rows("tblStock");
  EXPECT_GE(stock.size(), 400U);
  const std::map<int, Row> plu = rows("tblPlu");
  EXPECT_EQ(stock.size(), plu.size());
  EXPECT_EQ(rows("tblDepartment").size(), 10U);
  const std::set<int> free = freeSlots();
  EXPECT_EQ(stock.size() - free.size(), 200U);
  const auto count = [](const std::map<int, Row>& table, auto accept) {
    return std::ranges::count_if(table, [&](const auto& each) { return accept(each.second); });
  };
  const auto barcodes = count(plu, [](const Row& row) { return row.at("barcode").size() == 13; });
  EXPECT_GE(barcodes, 50);
  EXPECT_LT(barcodes, 200);
  EXPECT_GE(count(stock, [](const Row& row) { return row.at("description").size() > 32; }), 5);
  EXPECT_GE(std::distance(free.begin(), free.upper_bound(189)), 5);
  EXPECT_EQ(stock.begin()->first, 1);
  EXPECT_EQ(stock.rbegin()->first, static_cast<int>(stock.size()));
}

TEST_F(ShopStoreTest, EveryShapeIsSound) {
  for (const char* options :
       {"--shape cafe --barcodes all", "--encoded", "--slots 189 --all-named --uncompressed",
        "--price double --deptid text --flags byte --shuffled", "--packed-indexes --flags long",
        "--reference-maps --encoded --free-pages 7 --seed 3", "--moved 3,5-9,400 --flags boolean",
        "--no-description-index --departments 25 --slots 3000 --products 2900",
        "--generation 3 --barcodes mixed", "--generation 3 --shape cafe --encoded --moved 3,5-9",
        "--generation 3 --slots 3000 --products 2900 --packed-indexes --reference-maps",
        "--slots 0 --products 0 --departments 0", "--slots 9000 --products 8000"}) {
    ASSERT_EQ(make(options), "") << options;
    EXPECT_EQ(checkerVerdict(file_), "sound") << options;
    EXPECT_EQ(rows("tblStock").size(), rows("tblPlu").size()) << options;
  }
}

TEST_F(ShopStoreTest, OptionsChooseTheRows) {
  ASSERT_EQ(make("--slots 240 --free 123,140,174-176 --missing-stock 100 --missing-plu 100,123"),
            "");
  EXPECT_EQ(checkerVerdict(file_), "sound");
  EXPECT_EQ(freeSlots(), (std::set<int>{123, 140, 174, 175, 176}));
  const std::map<int, Row> stock = rows("tblStock");
  const std::map<int, Row> plu = rows("tblPlu");
  EXPECT_EQ(stock.size(), 239U);
  EXPECT_FALSE(stock.contains(100));
  EXPECT_EQ(plu.size(), 238U);
  EXPECT_FALSE(plu.contains(123));

  ASSERT_EQ(make("--slots 30 --products 25"), "");
  EXPECT_EQ(freeSlots(), (std::set<int>{17, 27, 28, 29, 30}));
}

TEST_F(ShopStoreTest, OptionsSetNamesAndDepartments) {
  std::ofstream(scratch_.folder() / "rows.tsv") << "3\tRow Three\t2\t1.2345\t5012345678900\r\n"
                                                   "4\tRow Four\n";
  ASSERT_EQ(make("--name 1='Ünïque = 1' --name '2=\\N' --rows '" +
                 (scratch_.folder() / "rows.tsv").string() +
                 "' --department \"1=O'Brien's\" --department 2= --department '3=\\N'"),
            "");
  EXPECT_EQ(checkerVerdict(file_), "sound");
  const std::map<int, Row> stock = rows("tblStock");
  EXPECT_EQ(stock.at(1).at("description"), "Ünïque = 1");
  EXPECT_EQ(stock.at(2).at("description"), "\\N");
  EXPECT_EQ(stock.at(3).at("description"), "Row Three");
  EXPECT_EQ(stock.at(3).at("deptid"), "2");
  EXPECT_EQ(stock.at(3).at("price"), "1.2345");
  EXPECT_EQ(rows("tblPlu").at(3).at("barcode"), "5012345678900");
  EXPECT_EQ(stock.at(4).at("description"), "Row Four");
  // The independent exporter shows an empty text as null; our own reader distinguishes them.
  jet::Database database(file_, u"shop.mdb", jet::Password{jettest::kStorePassword});
  EXPECT_THAT(jettest::linesOf(jettest::tableNamed(database, u"tblDepartment")),
              testing::ElementsAre("1\tO'Brien's", "2\t", "3\t\\N"));
}

TEST_F(ShopStoreTest, OptionsSetTheTypesOfColumns) {
  ASSERT_EQ(make("--price double --deptid text --flags byte --no-zero-length --required "
                 "--all-named --description-length 40"),
            "");
  const std::string schema = jettest::outputOf("mdb-schema '" + file_.string() + "'");
  EXPECT_THAT(schema, HasSubstr("[description]\t\t\tText (40) NOT NULL"));
  EXPECT_THAT(schema, HasSubstr("[price]\t\t\tDouble"));
  EXPECT_THAT(schema, HasSubstr("[deptid]\t\t\tText (10)"));
  EXPECT_THAT(schema, HasSubstr("[PRINTER1]\t\t\tByte"));
  const auto properties = [this] {
    return jettest::outputOf("mdb-prop '" + file_.string() + "' tblStock LvProp");
  };
  EXPECT_EQ(properties().find("AllowZeroLength"), std::string::npos);
  ASSERT_EQ(make(""), "");
  EXPECT_THAT(properties(), HasSubstr("AllowZeroLength: yes"));
  EXPECT_EQ(properties().find("Required"), std::string::npos);
}

TEST_F(ShopStoreTest, TheCheckersExitStatusShowsItsResult) {
  ASSERT_EQ(make("--generation 3"), "");
  int status = -1;
  const std::string notes = checkerOutput("-v", file_, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(notes.find("w7rt3q8814Z"), std::string::npos);
  std::filesystem::resize_file(file_, std::filesystem::file_size(file_) + 1);
  EXPECT_EQ(split(checkerOutput("", file_, &status), '\n').size(), 1U);
  EXPECT_EQ(status, 1);
  checkerOutput("", "/dev/null", &status);
  EXPECT_EQ(status, 2);
  checkerOutput("", scratch_.folder() / "none.mdb", &status);
  EXPECT_EQ(status, 2);
}

TEST_F(ShopStoreTest, EqualOptionsMakeEqualFiles) {
  ASSERT_EQ(make("--seed 5 --shuffled"), "");
  const std::string first = bytes();
  ASSERT_EQ(make("--seed 5 --shuffled"), "");
  EXPECT_EQ(first, bytes());
  ASSERT_EQ(make("--seed 6 --shuffled"), "");
  EXPECT_NE(first, bytes());
}

TEST_F(ShopStoreTest, UserErrorsEndWithATextAndAnExitStatus) {
  int status = 0;
  EXPECT_THAT(make("--nonsense", &status), HasSubstr("unknown: --nonsense"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(make("--slots", &status), HasSubstr("--slots needs a value"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(make("--slots 3x", &status), HasSubstr("3x"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(make("--price gold", &status), HasSubstr("gold"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(make("--rows /nowhere/rows.tsv", &status), HasSubstr("/nowhere/rows.tsv"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(make("--slots 5 --products 6", &status), HasSubstr("more products than slots"));
  EXPECT_EQ(status, 1);
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_THAT(jettest::outputOf(std::string(MAKESTORE_TOOL) + " --help"),
              HasSubstr("Usage: makestore OUTPUT.mdb"));
}

}  // namespace
