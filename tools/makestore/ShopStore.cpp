#include "makestore/ShopStore.h"

#include <functional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "makestore/ShopRows.h"
#include "platform/runtime/Conversion.h"

namespace makestore {
namespace {

using jet::ColumnType;
using runtime::Variant;

constexpr std::size_t kDepartmentIdLength = 10;
constexpr std::size_t kBarcodeLength = 20;
constexpr double kTenThousandths = 10000;
constexpr int kTightFreeStep = 4;
constexpr std::u16string_view kReorder =
    u". Reorder from the wholesaler on Mondays, two cases at least; no returns.";

/// A column and the function that returns its value for a slot.
struct Field {
  Column column;
  std::function<Variant(const SlotRow&)> value;
};

Variant orNull(const std::optional<std::u16string>& text) {
  return text ? Variant(*text) : Variant();
}

Variant integerOf(ColumnType type, int number) {
  if (type == ColumnType::Boolean) return number != 0;
  if (type == ColumnType::Byte) return static_cast<std::uint8_t>(number);
  if (type == ColumnType::Integer) return static_cast<std::int16_t>(number);
  if (type == ColumnType::Long) return std::int32_t{number};
  throw std::invalid_argument("a flag is a Boolean, Byte, Integer or Long");
}

Variant departmentId(const ShopOptions& options, const std::optional<std::u16string>& id) {
  if (!id) return {};
  if (options.departmentType == ColumnType::Text) return *id;
  return runtime::toLong(*id);
}

/// The columns of all shops' tables, each with the type and length that the options set.
class Fields {
 public:
  explicit Fields(const ShopOptions& options) : options_(options) {}

  Field id() const {
    return {{.name = u"id"}, [](const SlotRow& slot) { return Variant(slot.id); }};
  }
  Field recordNumber() const {
    return {{.name = u"recno", .autonumber = true},
            [](const SlotRow& slot) { return Variant(slot.recordNumber); }};
  }
  Field description() const {
    Column column = text(u"description", options_.descriptionLength);
    column.required = options_.descriptionRequired;
    return {std::move(column), [](const SlotRow& slot) { return orNull(slot.name); }};
  }
  Field price() const {
    return {{.name = u"price", .type = options_.priceType}, [this](const SlotRow& slot) {
              if (options_.priceType == ColumnType::Double)
                return Variant(static_cast<double>(slot.price) / kTenThousandths);
              return Variant(runtime::Currency{slot.price});
            }};
  }
  Field department() const {
    return {departmentColumn(u"deptid"),
            [this](const SlotRow& slot) { return departmentId(options_, slot.department); }};
  }
  Field barcode() const {
    return {text(u"barcode", kBarcodeLength),
            [](const SlotRow& slot) { return orNull(slot.barcode); }};
  }
  Field yesNo(std::u16string name, bool SlotRow::*member) const {
    return {{.name = std::move(name), .type = ColumnType::Boolean},
            [member](const SlotRow& slot) { return Variant(slot.*member); }};
  }
  Field no(std::u16string name) const {
    return {{.name = std::move(name), .type = ColumnType::Boolean},
            [](const SlotRow&) { return Variant(false); }};
  }
  /// A flag of tblPlu; `usual` is its type where the options set none.
  Field flag(std::u16string name, ColumnType usual, bool isInstruction = false) const {
    const ColumnType type = options_.flagType.value_or(usual);
    return {{.name = std::move(name), .type = type}, [type, isInstruction](const SlotRow& slot) {
              return integerOf(type, isInstruction && slot.instruction ? 1 : 0);
            }};
  }
  Field lastSold() const {
    return {{.name = u"lastsold", .type = ColumnType::DateTime},
            [](const SlotRow& slot) { return slot.lastSold; }};
  }
  Field onHand() const {
    return {{.name = u"onhand", .type = ColumnType::Integer},
            [](const SlotRow& slot) { return Variant(slot.onHand); }};
  }
  Field guid() const {
    return {{.name = u"rowguid", .type = ColumnType::Guid},
            [](const SlotRow& slot) { return Variant(slot.guid); }};
  }
  Field memo(std::u16string name) const {
    return {{.name = std::move(name),
             .type = ColumnType::Memo,
             .compressed = options_.compressed,
             .allowZeroLength = options_.zeroLength},
            [](const SlotRow& slot) { return orNull(slot.notes); }};
  }
  Field shortNote(std::u16string name, std::size_t length) const {
    return {text(std::move(name), length), [length](const SlotRow& slot) {
              return slot.notes ? Variant(slot.notes->substr(0, length)) : Variant();
            }};
  }
  Field longNote(std::u16string name, std::size_t length) const {
    return {text(std::move(name), length), [length](const SlotRow& slot) {
              if (!slot.notes) return Variant();
              return Variant((*slot.notes + std::u16string(kReorder)).substr(0, length));
            }};
  }

  Column departmentColumn(std::u16string name) const {
    if (options_.departmentType == ColumnType::Text)
      return text(std::move(name), kDepartmentIdLength);
    return {.name = std::move(name)};
  }
  Column text(std::u16string name, std::size_t length) const {
    Column column = Column::text(std::move(name), length);
    column.compressed = options_.compressed;
    column.allowZeroLength = options_.zeroLength;
    return column;
  }

 private:
  const ShopOptions& options_;
};

std::vector<Field> stockFields(const ShopOptions& options, const Fields& fields) {
  switch (options.tables) {
    case ShopTables::Cafe:
      return {fields.price(), fields.description(), fields.no(u"discontinued"),
              fields.id(),    fields.department(),  fields.shortNote(u"place", 20)};
    case ShopTables::Tight:
      return {fields.id(),
              fields.description(),
              fields.price(),
              fields.department(),
              fields.longNote(u"notes", 255),
              fields.yesNo(u"active", &SlotRow::taxable)};
    case ShopTables::Corner:
      break;
  }
  return {fields.id(),       fields.recordNumber(), fields.description(),
          fields.price(),    fields.department(),   fields.yesNo(u"taxable", &SlotRow::taxable),
          fields.lastSold(), fields.onHand(),       fields.memo(u"notes"),
          fields.guid()};
}

std::vector<Field> pluFields(const ShopOptions& options, const Fields& fields) {
  constexpr ColumnType kByte = ColumnType::Byte;
  constexpr ColumnType kInteger = ColumnType::Integer;
  constexpr ColumnType kLong = ColumnType::Long;
  switch (options.tables) {
    case ShopTables::Cafe:
      return {fields.flag(u"NEG_PRICE", kByte), fields.flag(u"ITEM_TYPE", kLong, true),
              fields.flag(u"OPEN_PLU", kByte),  fields.flag(u"PRINTER2", kLong),
              fields.flag(u"PRINTER1", kLong),  fields.id()};
    case ShopTables::Tight:
      return {fields.id(),
              fields.barcode(),
              fields.flag(u"PRINTER1", kInteger),
              fields.flag(u"PRINTER2", kInteger),
              fields.flag(u"OPEN_PLU", kInteger),
              fields.flag(u"ITEM_TYPE", kInteger, true),
              fields.flag(u"NEG_PRICE", kInteger)};
    case ShopTables::Corner:
      break;
  }
  return {fields.id(),
          fields.barcode(),
          fields.flag(u"PRINTER1", kInteger),
          fields.flag(u"PRINTER2", kInteger),
          fields.flag(u"OPEN_PLU", kInteger),
          fields.no(u"SCALE"),
          fields.flag(u"ITEM_TYPE", kInteger, true),
          fields.flag(u"NEG_PRICE", kInteger)};
}

void addSlots(StoreTable& table, const std::vector<Field>& fields,
              const std::vector<SlotRow>& slots, const std::set<int>& missing,
              const std::set<int>& moved) {
  for (const Field& field : fields) table.column(field.column);
  for (const SlotRow& slot : slots) {
    if (missing.contains(slot.id)) continue;
    std::vector<Variant> row;
    row.reserve(fields.size());
    for (const Field& field : fields) row.push_back(field.value(slot));
    table.row(std::move(row), moved.contains(slot.id) ? Placement::Moved : Placement::Plain);
  }
}

void addDepartments(StoreBuilder& store, const ShopOptions& options, const Fields& fields) {
  const bool cafe = options.tables == ShopTables::Cafe;
  StoreTable& table = store.table(u"tblDepartment");
  const Column description = fields.text(u"description", cafe ? 40 : 30);
  if (cafe)
    table.column(description).column(fields.departmentColumn(u"id")).column({.name = u"colour"});
  if (!cafe) table.column(fields.departmentColumn(u"id")).column(description);
  table.index(Index::primaryKey(u"id"));
  if (!cafe) table.index(Index::plain(u"description"));
  for (const ShopDepartment& department : departmentsOf(options)) {
    const Variant id = departmentId(options, department.id);
    const Variant name = orNull(department.name);
    if (cafe)
      table.row({name, id, std::int32_t{0x00C000}});
    else
      table.row({id, name});
  }
}

/// The café's barcodes: one row for each barcode of a product.
void addBarcodes(StoreBuilder& store, const Fields& fields, const std::vector<SlotRow>& slots) {
  StoreTable& table = store.table(u"tblBarcode");
  table.column({.name = u"seq"}).column({.name = u"pluid"}).column(fields.text(u"barcode", 20));
  table.index(Index::primaryKey(u"seq"));
  std::int32_t number = 0;
  for (const SlotRow& slot : slots)
    if (slot.barcode) table.row({++number, slot.id, *slot.barcode});
}

StoredQuery salesItems(const ShopOptions& options) {
  if (options.tables != ShopTables::Cafe)
    return SelectQuery()
        .from(u"tblStock")
        .from(u"tblPlu")
        .from(u"tblDepartment")
        .column(u"tblStock.id", u"ID")
        .column(u"tblStock.description", u"DESCRIPTION")
        .column(u"tblPlu.barcode")
        .column(u"tblDepartment.description", u"deptname")
        .innerJoin(u"tblStock", u"tblPlu", u"tblStock.id = tblPlu.id")
        .leftJoin(u"tblStock", u"tblDepartment", u"tblStock.deptid = tblDepartment.id")
        .named(u"qrySalesitems");
  return SelectQuery()
      .from(u"tblStock", u"s")
      .from(u"tblPlu", u"p")
      .from(u"tblDepartment", u"d")
      .from(u"tblBarcode", u"b")
      .column(u"s.id", u"ID")
      .column(u"s.description", u"DESCRIPTION")
      .column(u"b.barcode")
      .column(u"IIf(d.description Is Null,\"(none)\",d.description)", u"deptname")
      .column(u"s.description & \" [\" & s.deptid & \"]\"", u"label")
      .innerJoin(u"s", u"p", u"s.id = p.id")
      .leftJoin(u"s", u"d", u"s.deptid = d.id")
      .leftJoin(u"s", u"b", u"s.id = b.pluid")
      .where(u"(((s.discontinued)=False) AND ((p.ITEM_TYPE)<>9))")
      .named(u"qrySalesitems");
}

}  // namespace

ShopOptions cafeShop() {
  ShopOptions options;
  options.tables = ShopTables::Cafe;
  options.slots = 230;
  options.products = 78;
  options.priceType = ColumnType::Double;
  options.departmentType = ColumnType::Text;
  options.descriptionLength = 60;
  options.descriptionIndex = false;
  return options;
}

ShopOptions tightShop() {
  ShopOptions options;
  options.tables = ShopTables::Tight;
  options.slots = 212;
  options.free.emplace();
  for (int id = kTightFreeStep - 1; id <= options.slots; id += kTightFreeStep)
    options.free->insert(id);
  options.moved = {14, 27};
  return options;
}

StoreBuilder shopStore(const ShopOptions& options) {
  StoreBuilder store;
  store.version(options.version)
      .password(options.password)
      .encodingKey(options.encodingKey)
      .referenceMaps(options.referenceMaps)
      .freePages(options.freePages);
  const Fields fields(options);
  const bool tight = options.tables == ShopTables::Tight;
  std::vector<SlotRow> slots = slotsOf(options);
  if (tight && options.descriptionIndex) fillNameLeaf(slots, options.descriptionLength);

  StoreTable& stock = store.table(u"tblStock");
  addSlots(stock, stockFields(options, fields), slots, options.missingStock, options.moved);
  const auto index = [&options](Index wanted) {
    wanted.packed = options.packedIndexes;
    return wanted;
  };
  stock.index(index(Index::primaryKey(u"id")));
  if (options.tables != ShopTables::Cafe) stock.index(index(Index::plain(u"deptid")));
  if (options.descriptionIndex) stock.index(index(Index::plain(u"description")));
  if (tight) stock.fillPagesThrough(u"notes");

  StoreTable& plu = store.table(u"tblPlu");
  addSlots(plu, pluFields(options, fields), slots, options.missingPlu, {});
  plu.index(index(Index::primaryKey(u"id")));

  addDepartments(store, options, fields);
  if (options.tables == ShopTables::Cafe) addBarcodes(store, fields, slots);
  for (const ShopRule& each : options.rules) {
    StoreTable& table = store.tableNamed(each.table);
    if (each.column.empty())
      table.rule(each.rule);
    else
      table.columns()[table.columnIndex(each.column)].rule = each.rule;
  }
  store.query(salesItems(options));
  return store;
}

}  // namespace makestore
