#include "platform/forms/Application.h"

#include <QApplication>

#include "platform/forms/qt/Display.h"
#include "platform/forms/qt/Faces.h"
#include "platform/forms/qt/Look.h"
#include "platform/forms/qt/Pictures.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Readers.h"
#include "platform/forms/qt/Window.h"
#include "platform/process/Process.h"

namespace forms {
namespace {

/// What the toolkit is told of the command line: nothing but a name.
struct NoArguments {
  char name[10] = "keystrand";
  char* list[2] = {name, nullptr};
  int count = 1;
};

NoArguments noArguments;
bool running = false;

/// The toolkit gives up by a fatal message and an abort; here it ends like any other failed start.
void endOnFatalMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) qt::endWithoutDisplay();
}

}  // namespace

struct Application::Loop {
  Loop() : application(noArguments.count, noArguments.list) {
    auto* look = new qt::Look;
    look->setParent(&application);
    QApplication::setStyle(look);
    const Font usual;
    QApplication::setFont(qt::font(usual.face, usual.points, usual.weight));
    QApplication::setWindowIcon(qt::programIcon());
    qt::installReaders();
    QApplication::setQuitOnLastWindowClosed(false);
  }

  QApplication application;
};

Application::Application() {
  if (!qt::displayAvailable()) qt::endWithoutDisplay();
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
      Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QGuiApplication::setDesktopFileName(QString::fromLatin1(noArguments.name));
  const QtMessageHandler usual = qInstallMessageHandler(endOnFatalMessage);
  loop_ = std::make_unique<Loop>();
  qInstallMessageHandler(usual);
}

Application::~Application() {
  for (Form* screen : std::vector<Form*>(Form::Window::all())) Form::Window::release(*screen);
}

int Application::run() {
  if (process::hasEnded() || !Form::Window::anyShown()) return 0;
  const qt::EndWatch watch([] { QCoreApplication::exit(0); });
  running = true;
  QApplication::exec();
  running = false;
  return 0;
}

void Application::screenClosed() {
  if (running && !Form::Window::anyShown()) QCoreApplication::exit(0);
}

}  // namespace forms
