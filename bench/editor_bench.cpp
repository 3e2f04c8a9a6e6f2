// The levelled editor's own work, measured in one process off screen: refilling the item list
// against a bare list that is filled from a native database, a level change against a bare window
// whose buttons get new captions, a save against plain writing of the same files.

#include <QComboBox>
#include <QListView>
#include <QStringListModel>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>

#include "Folder.h"
#include "Measurement.h"
#include "NativeStore.h"
#include "PlainWindow.h"
#include "RunningEditor.h"
#include "ShopFiles.h"
#include "editor/frmMain.h"
#include "layoutdata/Statements.h"
#include "makestore/ShopStore.h"
#include "platform/files/ProgramFolder.h"
#include "shared/mdWriteINI.h"

namespace {

namespace fs = std::filesystem;
namespace statements = layoutdata::statements;
using bench::pick;
using bench::RunningEditor;
using bench::settle;

constexpr int kProducts = 40000;
constexpr const char* kTouchFile = "FastTouchButtons.ini";

void expectRows(int found) {
  if (found != kProducts) throw std::runtime_error(std::to_string(found) + " rows");
}

/// A bare list of the toolkit, filled by a native query with the texts that the editor's list has.
class PlainList {
 public:
  PlainList(fs::path native, const std::u16string& department) : native_(std::move(native)) {
    std::u16string text(statements::kItemsOfDepartmentHead);
    text.append(department).append(statements::kItemsOfDepartmentTail);
    // SQLite takes a text in double quotes for a name.
    text.replace(text.find(u"\"\""), 2, u"''");
    statement_ = QString::fromStdU16String(text).toStdString();
    view_.setUniformItemSizes(true);
    view_.setModel(&model_);
    view_.show();
  }

  void fill() {
    constexpr const char* kNames[] = {"Description", "id"};
    QStringList texts;
    const int rows = bench::readNativeFields(
        native_, statement_, kNames, [&](std::span<const std::u16string> fields) {
          texts.append(QString::fromStdU16String(fields[0]).leftJustified(130, u' ', false) +
                       QString::fromStdU16String(fields[1]));
        });
    expectRows(rows);
    model_.setStringList(texts);
  }

 private:
  fs::path native_;
  std::string statement_;
  QStringListModel model_;
  QListView view_;
};

void measureList(const RunningEditor& editor, const fs::path& native) {
  auto& departments = editor.control<QComboBox>("cbDept");
  const auto& list = editor.control<QListView>("List1");
  PlainList plain(native, departments.itemText(0).toStdU16String());
  bench::compare(
      "item list refilled with 40,000 entries and shown, against a bare list filled natively", 2,
      15,
      [&] {
        pick(departments, 0);
        settle();
        expectRows(list.model()->rowCount());
      },
      [&] {
        plain.fill();
        settle();
      });
}

std::string readPlainly(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writePlainly(const fs::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes;
}

fs::path layoutOf(const fs::path& posdata, int level) {
  return posdata / ("FastMovers" + std::to_string(level) + ".txt");
}

void measureLevels(const RunningEditor& editor) {
  auto& levels = editor.control<QComboBox>("cbLevel");
  const auto& lastKey = editor.control<QWidget>("MyButton1(62)");
  bench::PlainWindow plain(bench::kKeys, 0);
  plain.resize(lastKey.window()->size());
  plain.show();
  int level = 0;
  int round = 0;
  bench::compare(
      "level change of 63 keys up to the painted frame, against new captions in a bare window", 1.5,
      200,
      [&] {
        level = (level + 1) % bench::kLevels;
        pick(levels, level);
        settle();
        const int product = bench::kProductsPerLevel * (level + 1) + bench::kKeys - 1;
        if (lastKey.accessibleName() != "Product " + QString::number(product))
          throw std::runtime_error("the keys didn't change");
      },
      [&] {
        round = (round + 1) % bench::kLevels;
        plain.setCaptions(bench::kProductsPerLevel * (round + 1));
        settle();
      });
}

/// Saves as the editor does, without the notice, which shows for three quarters of a second.
class SavingEditor : public frmMain {
 public:
  void save() {
    const std::u16string posdata = files::programFolder() + u"\\Posdata\\";
    WriteLayoutFile(posdata + u"FastMovers1.txt");
    mdWriteINI::WriteINI(posdata + u"FastTouchButtons.ini", u"SETTINGS", u"SCREEN1", u"Drinks");
  }
};

void measureSave(const fs::path& posdata) {
  SavingEditor editor;
  editor.save();
  const std::string layout = readPlainly(layoutOf(posdata, 1));
  const std::string settings = readPlainly(posdata / kTouchFile);
  bench::compare(
      "save of 63 keys up to the notice, against plain writing of the same files", 3, 60,
      [&] { editor.save(); },
      [&] {
        writePlainly(layoutOf(posdata, 1), layout);
        writePlainly(posdata / kTouchFile, settings);
      });
}

}  // namespace

int main() {
  try {
    // On the disk of the build: the temporary folder may be one in memory.
    const bench::Folder shop(fs::read_symlink("/proc/self/exe").parent_path());
    makestore::ShopOptions options;
    options.slots = kProducts;
    options.products = kProducts;
    options.free.emplace();
    options.departmentCount = 1;
    bench::createShop(shop.path(), options);
    bench::writeSettings(shop.path());
    RunningEditor editor(shop.path());
    editor.start();
    makestore::StoreBuilder store = makestore::shopStore(options);
    bench::writeNative(shop / "native.db", store);
    measureList(editor, shop / "native.db");
    measureLevels(editor);
    measureSave(shop / "Posdata");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "editor_bench: " << error.what() << '\n';
    return 1;
  }
}
