#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "layoutdata/Statements.h"
#include "makestore/StoreBuilder.h"
#include "platform/jet/format/ColumnType.h"
#include "platform/jet/format/Layout.h"

namespace makestore {

/// The set of tables of a shop's store, with their columns.
enum class ShopTables {
  Corner,  ///< the ordinary store: prices as Currency, integer department ids, names indexed
  Cafe,    ///< other column types and options, barcodes in a table of their own, few indexes
  Tight,   ///< full data pages, moved rows, a full leaf as the root of the names' index
};

enum class Barcodes {
  None,   ///< all null
  Some,   ///< packaged products have one
  All,    ///< every product has one
  Mixed,  ///< in turn: one, null, an empty text, blanks only
};

/// A validation rule of one of the shop's tables.
struct ShopRule {
  std::u16string table;
  std::u16string column;  ///< empty for the rule on the table's rows
  Rule rule;
};

struct ShopDepartment {
  std::u16string id;
  std::optional<std::u16string> name;  ///< null where absent
};

/// The values of one slot that replace those of the demo's product; absent ones stay, except for
/// the name.
struct ShopSlot {
  std::optional<std::u16string> name;  ///< absent: a free slot
  std::optional<std::u16string> department = {};
  std::optional<std::int64_t> price = {};  ///< in ten-thousandths
  std::optional<std::u16string> barcode = {};
};

/// The properties of a shop's store. The defaults are those of the demo store; see also cafeShop
/// and tightShop. A slot is a row of tblStock for one product; slots have the ids 1 to `slots`.
struct ShopOptions {
  ShopTables tables = ShopTables::Corner;
  int slots = 420;
  int products = 200;  ///< number of named slots where `free` is absent
  /// Ids of the free slots. If absent, all slots but `products` are free: every 17th of the first
  /// 189, then the last ones.
  std::optional<std::set<int>> free;
  std::set<int> missingStock;               ///< ids without a row in tblStock
  std::set<int> missingPlu;                 ///< ids without a row in tblPlu
  std::set<int> moved;                      ///< ids whose tblStock row has moved and left a pointer
  std::map<int, ShopSlot> overrides;        ///< slots by id
  int departmentCount = 10;                 ///< where `departments` is empty
  std::vector<ShopDepartment> departments;  ///< in the order of their rows
  /// Of all random values: barcodes, quantities, dates, notes, GUIDs, row order.
  std::uint32_t seed = 1;
  bool shuffled = false;  ///< rows are in a random order in the file

  jet::ColumnType priceType = jet::ColumnType::Currency;   ///< or Double
  jet::ColumnType departmentType = jet::ColumnType::Long;  ///< or Text
  /// Byte, Integer, Long or Boolean; absent: the usual type of each flag.
  std::optional<jet::ColumnType> flagType;
  std::size_t descriptionLength = 50;
  bool descriptionIndex = true;
  bool descriptionRequired = false;
  bool zeroLength = true;      ///< of all texts
  bool compressed = true;      ///< of all texts
  bool packedIndexes = false;  ///< see Index::packed
  Barcodes barcodes = Barcodes::Some;

  jet::Version version = jet::Version::Jet4;
  std::u16string password{layoutdata::statements::kPassword};
  std::uint32_t encodingKey = 0;
  bool referenceMaps = false;
  std::size_t freePages = 2;
  std::vector<ShopRule> rules;
};

/// The café: 230 slots, Double prices, text departments, no index on names.
ShopOptions cafeShop();
/// The tight store: 212 slots, every fourth of them free. An update that sets the name of a free
/// slot moves its row and splits the index.
ShopOptions tightShop();

/// The store with its tables, rows and saved query qrySalesitems, ready to be written.
/// Raises std::invalid_argument for values that contradict each other, such as more products than
/// slots.
StoreBuilder shopStore(const ShopOptions& options);

}  // namespace makestore
