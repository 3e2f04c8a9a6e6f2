#include "platform/forms/qt/DisplayWatch.h"

#include <poll.h>

#include <QGuiApplication>
#include <QLibrary>
#include <cstdlib>

namespace forms::qt {
namespace {

int connectionToXServer() {
  if (QGuiApplication::platformName() != u"xcb") return -1;
  const auto* server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  QLibrary library(QStringLiteral("xcb"), 1);
  const auto descriptor =
      reinterpret_cast<int (*)(xcb_connection_t*)>(library.resolve("xcb_get_file_descriptor"));
  return server == nullptr || descriptor == nullptr ? -1 : descriptor(server->connection());
}

}  // namespace

// The drag's own filter must be there already: the last one that was installed is asked first.
DisplayWatch::DisplayWatch() : connection_(connectionToXServer()) {
  QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void DisplayWatch::customEvent(QEvent*) {
  qGuiApp->installEventFilter(this);
}

bool DisplayWatch::eventFilter(QObject*, QEvent*) {
  pollfd server{.fd = connection_, .events = POLLRDHUP, .revents = 0};
  if (connection_ >= 0 && ::poll(&server, 1, 0) > 0) std::_Exit(1);
  return false;
}

}  // namespace forms::qt
