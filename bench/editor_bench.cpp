// Measures the levelled editor's own work in one process off screen: refilling the item list
// against a bare list that is filled from a native database, a level change against plain reading
// of the same files, a save against plain writing of the same files.

#include <QApplication>
#include <QComboBox>
#include <QListView>
#include <QStringListModel>
#include <cstdlib>
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
#include "ShopFiles.h"
#include "editor/frmMain.h"
#include "layoutdata/Statements.h"
#include "makestore/ShopStore.h"
#include "platform/files/ProgramFolder.h"
#include "platform/forms/Application.h"
#include "platform/process/Process.h"
#include "shared/mdWriteINI.h"
#include "shared/startup/Main.h"
#include "support/TestHost.h"

namespace {

namespace fs = std::filesystem;
namespace statements = layoutdata::statements;

constexpr int kProducts = 40000;
constexpr const char* kTouchFile = "FastTouchButtons.ini";

template <class Widget>
Widget& control(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* found = window->findChild<Widget*>(QString::fromLatin1(name))) return *found;
  throw std::runtime_error(std::string("no ") + name + " on the screen");
}

/// Chooses an entry of a drop-down list as the user does.
void pick(QComboBox& box, int entry) {
  box.setCurrentIndex(entry);
  box.activated(entry);
}

/// Handles all pending events, paint events too.
void settle() {
  QCoreApplication::processEvents();
}

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

void measureList(const fs::path& native) {
  auto& departments = control<QComboBox>("cbDept");
  const auto& list = control<QListView>("List1");
  PlainList plain(native, departments.itemText(0).toStdU16String());
  bench::compare(
      "item list refilled with 40,000 entries and shown, beside a bare list filled natively", 2, 15,
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

/// The keys are painted between the changes, outside of the measured time.
void measureLevels(const fs::path& posdata) {
  auto& levels = control<QComboBox>("cbLevel");
  const auto& lastKey = control<QWidget>("MyButton1(62)");
  int level = 0;
  bench::compareParts(
      "level change of 63 keys, beside plain reading of the same files", 3, 400,
      [&] {
        level = (level + 1) % bench::kLevels;
        settle();
        const double seconds = bench::secondsOf([&] { pick(levels, level); });
        const int product = bench::kProductsALevel * (level + 1) + bench::kKeys - 1;
        if (lastKey.accessibleName() != "Product " + QString::number(product))
          throw std::runtime_error("the keys didn't change");
        return seconds;
      },
      [&] {
        settle();
        return bench::secondsOf([&] {
          const std::string layout = readPlainly(layoutOf(posdata, level + 1));
          const std::string settings = readPlainly(posdata / kTouchFile);
          if (layout.empty() || settings.empty()) throw std::runtime_error("nothing to read");
        });
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
      "save of 63 keys up to the notice, beside plain writing of the same files", 3, 60,
      [&] { editor.save(); },
      [&] {
        writePlainly(layoutOf(posdata, 1), layout);
        writePlainly(posdata / kTouchFile, settings);
      });
}

}  // namespace

int main() {
  try {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // On the disk of the build, since the temporary folder may be in memory.
    const bench::Folder shop(fs::read_symlink("/proc/self/exe").parent_path());
    makestore::ShopOrder order;
    order.slots = kProducts;
    order.products = kProducts;
    order.free.emplace();
    order.departmentCount = 1;
    bench::layOutShop(shop.path(), order);
    bench::writeSettings(shop.path());
    setenv("XDG_CONFIG_HOME", shop.path().c_str(), 1);
    files::setProgramFile(shop / "keystrand");
    forms::Application application;
    const support::TestHost host;
    process::dispatch([] { mdMain::Main(); });
    settle();
    makestore::StoreBuilder store = makestore::shopStore(order);
    bench::writeNative(shop / "native.db", store);
    measureList(shop / "native.db");
    measureLevels(shop / "Posdata");
    measureSave(shop / "Posdata");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "editor_bench: " << error.what() << '\n';
    return 1;
  }
}
