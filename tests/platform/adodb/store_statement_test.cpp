#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <string>
#include <vector>

#include "TestStore.h"

namespace adodbtest {
namespace {

using ADODB::Connection;
using ADODB::Recordset;
using Row = ReferenceStore::Row;

constexpr const char* kNull = "\\N";

/// The system's statements on the reference stores, compared with their EXPECTED files.
class StoreStatement : public testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  /// The values of these columns, joined by "|"; null is the empty text, as on the screens.
  static Lines rows(const ReferenceStore& store, std::u16string_view statement,
                    const Lines& columns) {
    Connection connection;
    connection.Open(connectionString(wide(store.file.string())), u"", u"", -1);
    connection.CursorLocation(ADODB::kUseClient);
    Recordset recordset;
    recordset.Open(statement, connection, 1, 2, -1);
    Lines lines;
    for (; !recordset.Eof(); recordset.MoveNext()) {
      std::string& line = lines.emplace_back();
      for (const std::string& column : columns)
        line += narrow(recordset.Fields(wide(column)).value() & u"") + "|";
    }
    EXPECT_EQ(recordset.RecordCount(), static_cast<int>(lines.size()));
    return lines;
  }

  static Lines expected(const std::vector<Row>& rows, const Lines& columns,
                        const std::function<bool(const Row&)>& wanted) {
    Lines lines;
    for (const Row& row : rows) {
      if (!wanted(row)) continue;
      std::string& line = lines.emplace_back();
      for (const std::string& column : columns)
        line += (row.at(column) == kNull ? "" : row.at(column)) + "|";
    }
    return lines;
  }

  /// A text as it compares with others: in lower case, without blanks at its end.
  static std::string folded(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
  }
  static bool isNamed(const Row& row) {
    return row.at("DESCRIPTION") != kNull && !folded(row.at("DESCRIPTION")).empty();
  }

  const std::vector<ReferenceStore> stores_ = referenceStores();
};

TEST_F(StoreStatement, LevelsAndFreeSlotsComeInIdOrder) {
  const Lines columns{"id", "description"};
  for (const ReferenceStore& store : stores_) {
    SCOPED_TRACE(store.file);
    const auto& stock = store.tables.at("tblStock");
    EXPECT_EQ(
        rows(store, u"select id, description from tblStock Where id >=64 and id <=126 order by ID",
             columns),
        expected(stock, columns, [](const Row& row) {
          return std::stoi(row.at("id")) >= 64 && std::stoi(row.at("id")) <= 126;
        }));
    EXPECT_EQ(rows(store,
                   u"select id, description, price, deptid from tblStock where Description is null "
                   u"order by ID",
                   {"id", "deptid"}),
              expected(stock, {"id", "deptid"},
                       [](const Row& row) { return row.at("description") == kNull; }));
  }
}

TEST_F(StoreStatement, ProductsComeInTheOrderOfTheirNamesAlsoOfOneDepartment) {
  const Lines columns{"ID", "DESCRIPTION", "barcode"};
  const std::string select = "SELECT ID,DESCRIPTION,barcode from qrySalesitems where ";
  const std::string order = "description <> \"\" order by description";
  for (const ReferenceStore& store : stores_) {
    SCOPED_TRACE(store.file);
    const auto& sales = store.tables.at("qrySalesitems");
    EXPECT_EQ(rows(store, wide(select + order), columns), expected(sales, columns, isNamed));
    const auto& departments = store.tables.at("tblDepartment");
    for (const Row& department : departments) {
      const std::string name = department.at("description");
      if (name == kNull) continue;
      SCOPED_TRACE(name);
      const auto items = wide(select + "deptname = '" + name + "' and " + order);
      const auto ids =
          wide("select id, description from tblDepartment where description = '" + name + "'");
      if (name.find('\'') != std::string::npos) {
        EXPECT_EQ(errorNumberOf([&] { rows(store, items, columns); }), -2147217900);
        EXPECT_EQ(errorNumberOf([&] { rows(store, ids, {"id"}); }), -2147217900);
        continue;
      }
      EXPECT_EQ(rows(store, items, columns), expected(sales, columns, [&](const Row& row) {
                  return isNamed(row) && folded(row.at("deptname")) == folded(name);
                }));
      EXPECT_TRUE(std::ranges::is_permutation(
          rows(store, ids, {"id"}), expected(departments, {"id"}, [&](const Row& row) {
            return folded(row.at("description")) == folded(name);
          })));
    }
  }
}

}  // namespace
}  // namespace adodbtest
