#include "support/Shop.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <algorithm>

#include "editor/frmMain.h"
#include "largeeditor/frmMainBig.h"
#include "makestore/StoreBuilder.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/Recordset.h"
#include "platform/process/Process.h"
#include "platform/process/seam/ProcessEnd.h"
#include "platform/runtime/Conversion.h"
#include "productadd/frmAddPlu.h"
#include "shared/mdMain.h"
#include "shared/mdOpenDatabase.h"
#include "shared/notice/frmSaved.h"
#include "shared/startup/Main.h"

namespace support {

namespace {

constexpr const char* kLineEnd = "\r\n";

constexpr std::int32_t kDrinks = 1;
constexpr std::int32_t kFood = 2;

const std::map<std::int32_t, std::optional<std::u16string>> kDepartments{{kDrinks, u"Drinks"},
                                                                         {kFood, u"Food"},
                                                                         {3, u"O'Brien's"},
                                                                         {4, u"Empty hall"},
                                                                         {5, std::nullopt}};

runtime::Variant textOrNull(const std::optional<std::u16string>& text) {
  return text ? runtime::Variant(*text) : runtime::Variant();
}

makestore::Column numberColumn(std::u16string name, jet::ColumnType type) {
  return {.name = std::move(name), .type = type};
}

bool contains(const std::vector<std::int32_t>& ids, std::int32_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

void forgetTheRun() {
  forms::DefaultInstance<frmMain>::drop();
  forms::DefaultInstance<frmMainBig>::drop();
  forms::DefaultInstance<frmAddPlu>::drop();
  forms::DefaultInstance<frmSaved>::drop();
  mdMain::strAddedDesc.clear();
  mdMain::strAddedId.clear();
  mdOpenDatabase::StoreRecordset.setAbsent();
  mdOpenDatabase::StoreConnection.setAbsent();
}

Shop::Shop() {
  process::setHost(host);
  folder.write(folder.settingsFolder() / "tavenor.ini", "[comms]\nstorename=Demo\n");
}

Shop::~Shop() {
  forgetTheRun();
}

std::filesystem::path Shop::storeFile() const {
  return folder.path() / "Stores" / "Demo" / "master.mdb";
}

void Shop::writeStore() {
  makestore::StoreBuilder store;
  store.password(u"w7rt3q8814Z");
  makestore::Table& stock = store.table(u"tblStock");
  stock.column(numberColumn(u"id", jet::ColumnType::Long))
      .column(makestore::Column::text(u"description", 80))
      .column(numberColumn(u"price", jet::ColumnType::Currency))
      .column(numberColumn(u"deptid", jet::ColumnType::Long))
      .index(makestore::Index::primaryKey(u"id"))
      .index(makestore::Index::plain(u"description"));
  makestore::Table& plu = store.table(u"tblPlu");
  plu.column(numberColumn(u"id", jet::ColumnType::Long))
      .column(makestore::Column::text(u"barcode", 20))
      .index(makestore::Index::primaryKey(u"id"));
  for (const char16_t* flag : {u"PRINTER1", u"PRINTER2", u"OPEN_PLU", u"ITEM_TYPE", u"NEG_PRICE"})
    plu.column(numberColumn(flag, jet::ColumnType::Integer));
  makestore::Table& departments = store.table(u"tblDepartment");
  departments.column(numberColumn(u"id", jet::ColumnType::Long))
      .column(makestore::Column::text(u"description", 30))
      .index(makestore::Index::primaryKey(u"id"));
  for (const auto& [id, name] : kDepartments) departments.row({id, textOrNull(name)});

  std::map<std::int32_t, std::optional<std::u16string>> products;
  for (std::int32_t id = 1; id <= slotCount; ++id) products[id] = u"Item " + runtime::toText(id);
  for (const std::int32_t free : {100, 130, 195})
    if (free <= slotCount) products[free] = std::nullopt;
  for (const auto& [id, name] : names) products[id] = name;
  constexpr std::int16_t kOff = 0;
  for (const auto& [id, name] : products) {
    std::optional<std::u16string> barcode;
    if (id % 3 == 0) barcode = u"50000" + runtime::toText(id);
    if (const auto given = barcodes.find(id); given != barcodes.end()) barcode = given->second;
    if (!contains(missingStock, id))
      stock.row({id, textOrNull(name), runtime::Currency{10000}, id % 2 == 0 ? kDrinks : kFood});
    if (!contains(missingPlu, id)) plu.row({id, textOrNull(barcode), kOff, kOff, kOff, kOff, kOff});
  }
  store.query(makestore::SelectQuery()
                  .column(u"tblStock.id", u"ID")
                  .column(u"tblStock.description", u"DESCRIPTION")
                  .column(u"tblPlu.barcode")
                  .column(u"tblDepartment.description", u"deptname")
                  .from(u"tblStock")
                  .from(u"tblPlu")
                  .from(u"tblDepartment")
                  .innerJoin(u"tblStock", u"tblPlu", u"tblStock.id = tblPlu.id")
                  .leftJoin(u"tblStock", u"tblDepartment", u"tblStock.deptid = tblDepartment.id")
                  .named(u"qrySalesitems"));
  std::filesystem::create_directories(storeFile().parent_path());
  store.write(storeFile());
}

void Shop::newRun() {
  forgetTheRun();
  process::resetEnded();
  host.failures.clear();
  host.endStatus.reset();
}

void Shop::start() {
  if (!std::filesystem::exists(folder.path() / "Stores")) writeStore();
  process::dispatch([] { mdMain::Main(); });
  settle();
}

WindowDriver Shop::open(std::string_view screen) {
  start();
  return WindowDriver(screen);
}

void Shop::touchSettings(std::string_view text) const {
  folder.write("Posdata/FastTouchButtons.ini", text);
}

std::string Shop::touchFile() const {
  return folder.read("Posdata/FastTouchButtons.ini").value_or("");
}

std::optional<std::string> Shop::setting(std::string_view key) const {
  const std::string text = readFile(folder.settingsFolder() / "tavenor.ini").value_or("");
  const std::string head = "\n" + std::string(key) + "=";
  const std::size_t begin = text.find(head);
  if (begin == std::string::npos) return std::nullopt;
  const std::size_t value = begin + head.size();
  return text.substr(value, text.find_first_of("\r\n", value) - value);
}

std::vector<std::string> Shop::layout(std::string_view file) const {
  std::vector<std::string> found;
  const std::string bytes = folder.read(std::filesystem::path("Posdata") / file).value_or("");
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = bytes.find(kLineEnd, at);
    EXPECT_NE(end, std::string::npos) << "the last line has no end";
    if (end == std::string::npos) break;
    found.push_back(bytes.substr(at, end - at));
    at = end + 2;
  }
  return found;
}

std::vector<std::string> Shop::save(WindowDriver& user, std::string_view file) {
  user.click("cmdSave");
  EXPECT_EQ(failure(), 0) << "the save failed";
  EXPECT_FALSE(WindowDriver::isShown("frmSaved"));
  auto saved = layout(file);
  const std::size_t keys = user.window().objectName() == "frmMain" ? 63 : 108;
  EXPECT_EQ(saved.size(), keys);
  saved.resize(keys);
  return saved;
}

std::int32_t Shop::failure() const {
  return host.failures.empty() ? 0 : host.failures.front().number();
}

std::u16string entry(std::u16string_view description, std::int32_t id) {
  std::u16string text(description);
  text.resize(130, u' ');
  return text + runtime::toText(id);
}

std::string lineOf(const LayoutLine& line) {
  return std::to_string(line.key) + "," + line.product + "," + line.caption + "," +
         std::to_string(line.back) + "," + std::to_string(line.font);
}

std::string lines(const std::vector<std::string>& texts) {
  std::string bytes;
  for (const std::string& text : texts) bytes += text + kLineEnd;
  return bytes;
}

std::string caption(const WindowDriver& user, std::string_view control) {
  return user.control(control).accessibleName().toStdString();
}

std::int32_t shownColour(const WindowDriver& user, std::string_view control) {
  constexpr int kInsideTheEdge = 6;
  const QColor colour =
      user.control(control).grab().toImage().pixelColor(kInsideTheEdge, kInsideTheEdge);
  return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

std::string key(int index) {
  return "MyButton1(" + std::to_string(index) + ")";
}

}  // namespace support
