#include "platform/forms/Application.h"

#include <QApplication>
#include <QFontMetrics>
#include <cstdio>
#include <cstdlib>

#include "platform/files/ReadWatch.h"
#include "platform/forms/qt/AccessibleFactory.h"
#include "platform/forms/qt/Display.h"
#include "platform/forms/qt/DisplayLossHandler.h"
#include "platform/forms/qt/Faces.h"
#include "platform/forms/qt/HeldKeys.h"
#include "platform/forms/qt/Look.h"
#include "platform/forms/qt/ModalRestorer.h"
#include "platform/forms/qt/Pictures.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/WaitPointer.h"
#include "platform/forms/qt/Window.h"
#include "platform/process/Process.h"
#include "platform/process/StandardStreams.h"

namespace forms {
namespace {

/// The command line that the toolkit gets: a name and no arguments.
struct NoArguments {
  char name[10] = "keystrand";
  char* list[2] = {name, nullptr};
  int count = 1;
};

NoArguments noArguments;

/// A toolkit that can't start writes a fatal message and then aborts. This handler ends the process
/// first, as for a missing display.
void endOnFatalMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) qt::endWithoutDisplay();
}

/// Replaces the toolkit's own handler, which waits where standard error is a full pipe.
void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  process::writeToStandardError(qFormatLogMessage(type, context, message).toStdString() + "\n");
}

/// When the display connection is lost, the toolkit calls `exit` from inside a handler. Objects on
/// the stack are not destroyed, and the toolkit's exit handlers would then find live windows and
/// crash. This handler runs first and ends the process.
void endWithLostDisplay() {
  if (QCoreApplication::instance() == nullptr) return;
  std::fflush(nullptr);
  std::_Exit(1);
}

}  // namespace

struct Application::Toolkit {
  Toolkit() : application(noArguments.count, noArguments.list) {
    auto* look = new qt::Look;
    look->setParent(&application);
    QApplication::setStyle(look);
    const Font usual;
    QApplication::setFont(qt::font(usual.face, usual.points, usual.weight));
    // Without any font the toolkit still lists generic families, so test for a glyph.
    if (!QFontMetrics(QApplication::font()).inFont(u'a'))
      process::writeToStandardError(
          "There is no font with which the program could show its texts.\n");
    QApplication::setWindowIcon(qt::programIcon());
    qt::installAccessibleFactory();
    new qt::HeldKeys(&application);
    new qt::ModalRestorer(&application);
    QApplication::setQuitOnLastWindowClosed(false);
  }

  QApplication application;
  qt::DisplayLossHandler displayLossHandler;
};

Application::Application() {
  if (!qt::displayAvailable()) qt::endWithoutDisplay();
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QGuiApplication::setDesktopFileName(QString::fromLatin1(noArguments.name));
  qInstallMessageHandler(endOnFatalMessage);
  toolkit_ = std::make_unique<Toolkit>();
  qInstallMessageHandler(writeMessage);
  std::atexit(endWithLostDisplay);
  files::onRead(qt::WaitPointer::showIfLate);
}

Application::~Application() {
  files::onRead({});
}

int Application::run() {
  if (process::hasEnded() || !qt::Window::anyShown()) return 0;
  const qt::EndRegistration registration([] { QCoreApplication::exit(0); });
  qt::Window::onLastClosed([] { QCoreApplication::exit(0); });
  QApplication::exec();
  qt::Window::onLastClosed({});
  return 0;
}

}  // namespace forms
