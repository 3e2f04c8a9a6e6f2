#include "support/Shop.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <algorithm>

#include "editor/frmMain.h"
#include "largeeditor/frmMainBig.h"
#include "makestore/ShopStore.h"
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

const std::set<int> kFreeSlots{100, 130, 195};

}  // namespace

void resetModules() {
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
  resetModules();
}

std::filesystem::path Shop::storeFile() const {
  return folder.path() / "Stores" / "Demo" / "master.mdb";
}

void Shop::writeStore() {
  makestore::ShopOptions options;
  options.descriptionLength = 80;
  options.departments = {
      {u"1", u"Drinks"}, {u"2", u"Food"}, {u"3", u"O'Brien's"}, {u"4", u"Empty hall"}, {u"5", {}}};
  options.missingStock = missingStock;
  options.missingPlu = missingPlu;
  options.slots = names.empty() ? slotCount : std::max(slotCount, names.rbegin()->first);
  options.free.emplace();
  for (std::int32_t id = 1; id <= options.slots; ++id) {
    const auto name = names.find(id);
    if (id > slotCount && name == names.end()) {
      options.missingStock.insert(id);
      options.missingPlu.insert(id);
      continue;
    }
    options.free->insert(id);  // so that makestore adds no values of its own
    makestore::ShopSlot& slot = options.overrides[id];
    if (name != names.end())
      slot.name = name->second;
    else if (!kFreeSlots.contains(id))
      slot.name = u"Item " + runtime::toText(id);
    slot.department = id % 2 == 0 ? u"1" : u"2";
    slot.price = 10000;
    if (const auto given = barcodes.find(id); given != barcodes.end())
      slot.barcode = given->second;
    else if (id % 3 == 0)
      slot.barcode = u"50000" + runtime::toText(id);
  }
  std::filesystem::create_directories(storeFile().parent_path());
  makestore::shopStore(options).write(storeFile());
}

void Shop::newRun() {
  resetModules();
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

void Shop::writeTouchButtons(std::string_view text) const {
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

std::string layoutOf(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + kLineEnd;
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
