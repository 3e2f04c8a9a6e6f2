#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <functional>
#include <utility>
#include <vector>

#include "platform/adodb/Recordset.h"
#include "shared/mdOpenDatabase.h"
#include "support/ProductSheet.h"
#include "support/Shop.h"

using support::caption;
using support::key;
using support::lineOf;
using support::Shop;
using support::typeProduct;
using support::WindowDriver;

namespace {

// A column of one row of the store, as text.
std::u16string stored(const std::u16string& table, const std::u16string& column, int id) {
  mdOpenDatabase::OpenDatabase(u"MASTER");
  mdOpenDatabase::StoreRecordset.setNew();
  const std::string where = std::to_string(id);
  mdOpenDatabase::StoreRecordset->Open(u"select " + column + u" from " + table + u" where id = " +
                                           std::u16string(where.begin(), where.end()),
                                       *mdOpenDatabase::StoreConnection, mdOpenDatabase::kKeyset,
                                       mdOpenDatabase::kPessimistic, mdOpenDatabase::kUnspecified);
  const auto value = mdOpenDatabase::StoreRecordset->Fields(column).value();
  const std::u16string text = value.isNull() ? u"(null)" : value & u"";
  mdOpenDatabase::StoreRecordset->Close();
  mdOpenDatabase::StoreRecordset.setAbsent();
  mdOpenDatabase::CloseDatabase();
  return text;
}

std::u16string flags(int id) {
  std::u16string all;
  for (const char16_t* column : {u"PRINTER1", u"PRINTER2", u"OPEN_PLU", u"ITEM_TYPE", u"NEG_PRICE"})
    all += stored(u"tblPlu", column, id);
  return all;
}

// Double-clicks a key and runs `act` on the sheet that opens.
void onSheet(WindowDriver& user, int index, const std::function<void(WindowDriver&)>& act) {
  support::soon([&] {
    WindowDriver sheet("frmAddPlu");
    act(sheet);
  });
  user.doubleClick(key(index));
}

void add(WindowDriver& user, int index, std::u16string_view name, std::u16string_view price) {
  onSheet(user, index, [&](WindowDriver& sheet) {
    typeProduct(sheet, name, price);
    sheet.click("cmdSave");
  });
}

}  // namespace

TEST(AddProduct, TheLowestFreeSlotIsFilledAndTheProductIsPlacedOnTheKey) {
  Shop shop;
  WindowDriver user = shop.open();
  onSheet(user, 9, [](WindowDriver& sheet) {
    typeProduct(sheet, u"  Iced \u00e9clair, 'large'  ", u"12.50abc");
    sheet.key(Qt::Key_Return);  // past the department
    sheet.key(Qt::Key_Return);
    sheet.key(Qt::Key_Return);
    sheet.key(Qt::Key_Return);
    sheet.key(Qt::Key_Space);  // instruction
    sheet.click("cmdSave");
  });
  EXPECT_EQ(shop.failure(), 0);
  EXPECT_EQ(stored(u"tblStock", u"description", 100), u"Iced \u00e9clair, 'large'");
  EXPECT_EQ(stored(u"tblStock", u"price", 100), u"12.5");
  EXPECT_EQ(stored(u"tblStock", u"deptid", 100), u"0");
  EXPECT_EQ(flags(100), u"00010");
  EXPECT_EQ(shop.save(user)[9], lineOf({.key = 9,
                                        .product = "100",
                                        .caption = "Iced \xe9"
                                                   "clair, 'large'"}));
}

TEST(AddProduct, ClosingWithoutAddingPlacesTheLastAddedProductAgain) {
  Shop shop;
  WindowDriver user = shop.open();
  const auto close = [](WindowDriver& sheet) { sheet.click("cmdClose"); };
  onSheet(user, 1, close);
  EXPECT_EQ(caption(user, key(1)), "Key 1") << "nothing was added in this run";
  add(user, 2, u"Tea", u"2,50");
  EXPECT_EQ(stored(u"tblStock", u"price", 100), u"2");
  onSheet(user, 3, close);
  onSheet(user, 4, [](WindowDriver& sheet) {
    typeProduct(sheet, u"half typed", u"1");
    sheet.close();
  });
  add(user, 5, u"", u"");  // an empty name uses a slot up, and changes no key
  onSheet(user, 6, close);
  user.doubleClickRow("List1", 0);  // the double click made its key current
  const auto saved = shop.save(user);
  for (const int placed : {2, 3, 4})
    EXPECT_EQ(saved[placed].substr(0, 10), std::to_string(placed) + ",100,Tea,");
  EXPECT_EQ(saved[5].substr(0, 4), "5,,,");
  EXPECT_EQ(stored(u"tblStock", u"description", 130), u"");
  EXPECT_EQ(saved[6].substr(0, 9), "6,1,Item ");
  EXPECT_EQ(shop.failure(), 0);
}

TEST(AddProduct, EachFlagHasItsOwnRowAndColumn) {
  Shop shop;
  for (const int id : {1, 2, 3}) shop.names[id] = std::nullopt;
  WindowDriver user = shop.open();
  const std::vector<std::pair<int, std::u16string>> expected{
      {1, u"10000"}, {2, u"01000"}, {3, u"00100"}, {100, u"00010"}, {130, u"00001"}};
  const std::vector<QString> labels{
      "Product Name",       "Selling Price",     "Department Link",    "Print on Printer 1",
      "Print on Printer 2", "Set as Open Price", "Set as Instruction", "Set as Negative Price"};
  for (int flag = 0; flag < 5; ++flag) {
    onSheet(user, flag, [&](WindowDriver& sheet) {
      const auto& grid = dynamic_cast<QAbstractItemView&>(sheet.control("Grid1"));
      for (int row = 1; row <= 8; ++row)
        EXPECT_EQ(grid.model()->index(row, 1).data().toString(), labels[row - 1]);
      typeProduct(sheet, u"Tea", u"1");
      for (int row = 0; row <= flag; ++row) sheet.key(Qt::Key_Return);
      sheet.key(Qt::Key_Space);
      sheet.click("cmdSave");
    });
  }
  EXPECT_EQ(shop.failure(), 0);
  for (const auto& [id, flagsOfRow] : expected) EXPECT_EQ(flags(id), flagsOfRow) << id;
}

TEST(AddProduct, WithoutAFreeSlotAMessageShowsAndTheSheetCloses) {
  Shop shop;
  for (const int id : {100, 130, 195}) shop.names[id] = u"taken";
  WindowDriver user = shop.open();
  add(user, 1, u"Tea", u"1");
  EXPECT_FALSE(WindowDriver::isShown("frmAddPlu"));
  ASSERT_EQ(shop.host.messages.size(), 1U);
  EXPECT_EQ(shop.host.messages[0].text,
            u"There are no records where the data can be saved. In the POS, you will need to open "
            u"the Product Programming form under Management functions and setup the item first.");
  EXPECT_EQ(shop.host.messages[0].style, 0);
  EXPECT_EQ(caption(user, key(1)), "Key 1");
  EXPECT_EQ(shop.failure(), 0);
}

TEST(AddProduct, WithoutARowInTblPluTheProgramEndsAfterFillingTheStockRow) {
  Shop shop;
  shop.missingPlu = {100};
  WindowDriver user = shop.open();
  add(user, 1, u"Tea", u"1");
  EXPECT_EQ(shop.failure(), 3021);
  EXPECT_EQ(stored(u"tblStock", u"description", 100), u"Tea");
  EXPECT_EQ(caption(user, key(1)), "Key 1");
}
