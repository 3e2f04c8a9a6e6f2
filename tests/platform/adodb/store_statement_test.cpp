#include <gtest/gtest.h>

#include <algorithm>
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
  /// The values of the columns, joined by "|"; null is the empty text, as on the screens.
  static std::vector<std::string> rows(const ReferenceStore& store, std::u16string_view statement,
                                       const std::vector<std::string>& columns, int cursorType) {
    Connection connection;
    connection.Open(connectionString(wide(store.file.string())), u"", u"", -1);
    connection.CursorLocation(ADODB::kUseClient);
    Recordset recordset;
    recordset.Open(statement, connection, cursorType, 2, -1);
    std::vector<std::string> lines;
    for (; !recordset.Eof(); recordset.MoveNext()) {
      std::string line;
      for (const std::string& column : columns) {
        line += narrow(recordset.Fields(wide(column)).value() & u"") + "|";
      }
      lines.push_back(line);
    }
    EXPECT_EQ(recordset.RecordCount(), static_cast<int>(lines.size()));
    return lines;
  }

  static std::string line(const Row& row, const std::vector<std::string>& columns) {
    std::string text;
    for (const std::string& column : columns) {
      const std::string& value = row.at(column);
      text += (value == kNull ? "" : value) + "|";
    }
    return text;
  }

  template <class Wanted>
  static std::vector<std::string> expected(const std::vector<Row>& rows,
                                           const std::vector<std::string>& columns, Wanted wanted) {
    std::vector<std::string> lines;
    for (const Row& row : rows) {
      if (wanted(row)) lines.push_back(line(row, columns));
    }
    return lines;
  }

  static std::string inLowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
  }
  static std::string trimmed(const std::string& text) {
    const std::size_t end = text.find_last_not_of(' ');
    return end == std::string::npos ? "" : text.substr(0, end + 1);
  }
  static bool isNamed(const Row& row) {
    const std::string& name = row.at("DESCRIPTION");
    return name != kNull && !trimmed(name).empty();
  }

  const std::vector<ReferenceStore> stores_ = referenceStores();
};

TEST_F(StoreStatement, LevelsAndFreeSlotsComeInIdOrder) {
  for (const ReferenceStore& store : stores_) {
    SCOPED_TRACE(store.file);
    const auto& stock = store.tables.at("tblStock");
    const std::vector<std::string> columns{"id", "description"};
    for (const int first : {1, 64, 127}) {
      const auto statement =
          wide("select id, description from tblStock Where id >=" + std::to_string(first) +
               " and id <=" + std::to_string(first + 62) + " order by ID");
      EXPECT_EQ(rows(store, statement, columns, 1), expected(stock, columns, [&](const Row& row) {
                  const int id = std::stoi(row.at("id"));
                  return id >= first && id < first + 63;
                }));
    }
    EXPECT_EQ(rows(store,
                   u"select id, description, price, deptid from tblStock where Description is null "
                   u"order by ID",
                   {"id", "deptid"}, 1),
              expected(stock, {"id", "deptid"},
                       [](const Row& row) { return row.at("description") == kNull; }));
  }
}

TEST_F(StoreStatement, ProductsComeInTheOrderOfTheirNames) {
  for (const ReferenceStore& store : stores_) {
    SCOPED_TRACE(store.file);
    const auto& sales = store.tables.at("qrySalesitems");
    const std::vector<std::string> columns{"ID", "DESCRIPTION", "barcode"};
    EXPECT_EQ(rows(store,
                   u"SELECT ID,DESCRIPTION,barcode from qrySalesitems where description <> \"\" "
                   u"order by description",
                   columns, 0),
              expected(sales, columns, isNamed));
    EXPECT_EQ(rows(store,
                   u"SELECT ID,DESCRIPTION from qrySalesitems where description <> \"\" order by "
                   u"description",
                   {"ID", "DESCRIPTION"}, 0),
              expected(sales, {"ID", "DESCRIPTION"}, isNamed));
  }
}

TEST_F(StoreStatement, DepartmentsAreFoundByNameUnlessItHasAnApostrophe) {
  for (const ReferenceStore& store : stores_) {
    SCOPED_TRACE(store.file);
    const auto& departments = store.tables.at("tblDepartment");
    const std::vector<std::string> columns{"ID", "DESCRIPTION", "barcode"};
    std::vector<std::string> all =
        rows(store, u"select id, description from tblDepartment order by description",
             {"id", "description"}, 1);
    EXPECT_TRUE(std::ranges::is_permutation(
        all, expected(departments, {"id", "description"}, [](const Row&) { return true; })));
    for (const Row& department : departments) {
      const std::string name = department.at("description");
      if (name == kNull) continue;
      SCOPED_TRACE(name);
      const auto items =
          wide("SELECT ID,DESCRIPTION,barcode from qrySalesitems where deptname = '" + name +
               "' and description <> \"\" order by description");
      const auto ids =
          wide("select id, description from tblDepartment where description = '" + name + "'");
      if (name.find('\'') != std::string::npos) {
        EXPECT_EQ(failureNumber([&] { rows(store, items, columns, 0); }), -2147217900);
        EXPECT_EQ(failureNumber([&] { rows(store, ids, {"id"}, 1); }), -2147217900);
        continue;
      }
      const auto isIt = [&](const std::string& other) {
        return other != kNull && inLowerCase(trimmed(other)) == inLowerCase(trimmed(name));
      };
      EXPECT_EQ(rows(store, items, columns, 0),
                expected(store.tables.at("qrySalesitems"), columns,
                         [&](const Row& row) { return isNamed(row) && isIt(row.at("deptname")); }));
      EXPECT_TRUE(std::ranges::is_permutation(rows(store, ids, {"id"}, 1),
                                              expected(departments, {"id"}, [&](const Row& row) {
                                                return isIt(row.at("description"));
                                              })));
    }
  }
}

}  // namespace
}  // namespace adodbtest
