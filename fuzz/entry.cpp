// A text that another program drops on a key: in both editors it is split into an item, or ends the
// program with error 5, 6 or 13 and leaves the key unchanged.
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "editor/frmMain.h"
#include "largeeditor/frmMainBig.h"
#include "makestore/ShopStore.h"
#include "platform/files/ProgramFolder.h"
#include "platform/forms/Application.h"
#include "platform/process/seam/ProcessEnd.h"
#include "platform/runtime/Conversion.h"
#include "platform/runtime/Text.h"
#include "shared/mdOpenDatabase.h"
#include "support/TestHost.h"

// The font library keeps memory until the process ends; that is no leak of ours.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}

namespace {

constexpr qsizetype kLevelledId = 130;
constexpr qsizetype kLevelledDescription = 30;
constexpr qsizetype kLargeId = 10;

void require(bool holds) {
  if (!holds) __builtin_trap();
}

/// Both editors, off screen, on a little store.
struct Editors {
  Editors() {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("entry-" + std::to_string(getpid()));
    makestore::ShopOptions options;
    options.slots = options.products = 3;
    fs::create_directories(folder / "Stores" / "Demo");
    makestore::shopStore(options).write(folder / "Stores" / "Demo" / "MASTER.mdb");
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    files::setProgramFile(folder / "program");
    mdOpenDatabase::StoreFolder = files::programFolder() + u"\\Stores\\Demo";
    application = std::make_unique<forms::Application>();
    levelled = std::make_unique<frmMain>();
    large = std::make_unique<frmMainBig>();
    levelled->Show();
    large->Show();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const bool isLevelled = window->objectName() == "frmMain";
      if (!isLevelled && window->objectName() != "frmMainBig") continue;
      (isLevelled ? levelledKey : largeKey) = window->findChild<QWidget*>("MyButton1(7)");
      if (isLevelled) lastId = window->findChild<QLabel*>("Label3");
    }
    fs::remove_all(folder);
  }

  support::TestHost host;
  std::unique_ptr<forms::Application> application;
  std::unique_ptr<frmMain> levelled;
  std::unique_ptr<frmMainBig> large;
  QWidget* levelledKey = nullptr;
  QWidget* largeKey = nullptr;
  QLabel* lastId = nullptr;
};

/// Drops the data on the key. Returns the number of the failure that ends the program; 0 for none.
int drop(support::TestHost& host, QWidget& key, const QMimeData& data) {
  process::resetEnded();
  host.failures.clear();
  const QString before = key.accessibleName();
  const QPoint at = key.rect().center();
  QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&key, &enter);
  QDropEvent event(at, Qt::MoveAction, &data, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&key, &event);
  require(event.isAccepted());
  const int number = host.failures.empty() ? 0 : host.failures.front().number();
  require(number == 0 || number == 5 || number == 6 || number == 13);
  require(number == 0 || key.accessibleName() == before);
  return number;
}

/// The accessible name of key 7 with this caption.
QString nameFor(const QString& caption) {
  return caption.isEmpty() ? QStringLiteral("Key 7") : caption;
}

bool hasOuterBlanks(const QString& text) {
  return text.startsWith(' ') || text.endsWith(' ');
}

void dropOnBoth(Editors& editors, const QMimeData& data) {
  const QString text = data.text();
  const int levelled = drop(editors.host, *editors.levelledKey, data);
  require((levelled == 5) == (text.size() < kLevelledId));
  if (levelled == 0) {
    const QString name = editors.levelledKey->accessibleName();
    require(!hasOuterBlanks(name));
    require(name == nameFor({}) || text.left(kLevelledDescription).contains(name));
    const QString id = editors.lastId->text();
    require(QString::number(id.toShort()) == id);
  }
  const int large = drop(editors.host, *editors.largeKey, data);
  require(large != 5 || text.size() < kLargeId);
  require(large != 0 || (text.size() >= kLargeId &&
                         editors.largeKey->accessibleName() == nameFor(text.mid(kLargeId))));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Static, so that the windows are destroyed at exit: the program treats an exit with live windows
  // as the loss of its display.
  static Editors editors;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QMimeData plain;
  plain.setData("text/plain", bytes);
  dropOnBoth(editors, plain);

  // An entry in the form of each editor's list: the first line is the description, the rest the id.
  const qsizetype end = bytes.indexOf('\n');
  if (end < 0) return 0;
  QMimeData entry;
  entry.setText(QString::fromUtf8(bytes.left(end)).leftJustified(kLevelledId) +
                QString::fromUtf8(bytes.mid(end + 1)));
  dropOnBoth(editors, entry);
  entry.setText(QString::fromUtf8(bytes.mid(end + 1)).leftJustified(kLargeId) +
                QString::fromUtf8(bytes.left(end)));
  dropOnBoth(editors, entry);
  return 0;
}
