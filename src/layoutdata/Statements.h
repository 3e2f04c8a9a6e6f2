#pragma once

#include <array>
#include <string_view>

/// Every statement that the program runs on the store database, verbatim. Inserted text is never
/// escaped: an apostrophe in a department's name makes the statement invalid (contract).
namespace layoutdata::statements {

/// Name of the store database. The two `LoadList` procedures use the mixed-case spelling.
inline constexpr std::u16string_view kMaster = u"MASTER";
inline constexpr std::u16string_view kMasterMixedCase = u"Master";
/// The password of every store database.
inline constexpr std::u16string_view kPassword = u"w7rt3q8814Z";

/// Stock rows of a level: head, one of the level conditions, tail.
inline constexpr std::u16string_view kStockHead = u"select id, description from tblStock ";
inline constexpr std::u16string_view kStockTail = u" order by ID";
struct Level {
  std::u16string_view name;  ///< as the level box shows it
  std::u16string_view condition;
};
inline constexpr std::array<Level, 3> kLevels{{{u"1", u"Where id >=1 and id <=63"},
                                               {u"2", u"Where id >=64 and id <=126"},
                                               {u"3", u"Where id >=127 and id <=189"}}};

inline constexpr std::u16string_view kDepartments =
    u"select id, description from tblDepartment order by description";

/// Items and their barcodes: all items, or those of the department whose name stands between head
/// and tail.
inline constexpr std::u16string_view kItems =
    u"SELECT ID,DESCRIPTION,barcode from qrySalesitems where description <> \"\" order by "
    u"description";
inline constexpr std::u16string_view kItemsOfDepartmentHead =
    u"SELECT ID,DESCRIPTION,barcode from qrySalesitems where deptname = '";
inline constexpr std::u16string_view kItemsOfDepartmentTail =
    u"' and description <> \"\" order by description";

/// Items of the large editor.
inline constexpr std::u16string_view kItemsLarge =
    u"SELECT ID,DESCRIPTION from qrySalesitems where description <> \"\" order by description";

/// Free stock rows, lowest id first.
inline constexpr std::u16string_view kFreeSlots =
    u"select id, description, price, deptid from tblStock where Description is null order by ID";
/// Flags of one product; followed by its id in decimal.
inline constexpr std::u16string_view kFlags =
    u"SELECT id,PRINTER1, PRINTER2, OPEN_PLU,ITEM_TYPE,NEG_PRICE from tblPlu where ID = ";

/// A department by its name, between head and tail.
inline constexpr std::u16string_view kDepartmentByNameHead =
    u"select id, description from tblDepartment where description = '";
inline constexpr std::u16string_view kDepartmentByNameTail = u"'";

}  // namespace layoutdata::statements
