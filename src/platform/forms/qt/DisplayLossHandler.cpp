#include "platform/forms/qt/DisplayLossHandler.h"

#include <poll.h>
#include <signal.h>

#include <QGuiApplication>
#include <cstdlib>

#include "platform/forms/qt/LibraryFunction.h"

namespace forms::qt {
namespace {

/// The descriptor of the connection to the X server, -1 under another platform.
int connection = -1;

/// The previous action for SIGSEGV.
struct sigaction previousAction {};

int connectionToXServer() {
  if (QGuiApplication::platformName() != u"xcb") return -1;
  const auto* server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  auto* const descriptor =
      libraryFunction<int(xcb_connection_t*)>("xcb", 1, "xcb_get_file_descriptor");
  return server == nullptr || descriptor == nullptr ? -1 : descriptor(server->connection());
}

/// Ends the process if the X server has closed the connection. Otherwise restores the previous
/// action: the faulting instruction runs again on return and the process ends with that signal.
/// Calls only async-signal-safe functions.
void endIfServerHasGone(int signal) {
  pollfd server{.fd = connection, .events = POLLRDHUP, .revents = 0};
  if (connection >= 0 && ::poll(&server, 1, 0) > 0) std::_Exit(1);
  ::sigaction(signal, &previousAction, nullptr);
}

}  // namespace

DisplayLossHandler::DisplayLossHandler() {
  connection = connectionToXServer();
  struct sigaction action {};
  action.sa_handler = endIfServerHasGone;
  action.sa_flags = SA_ONSTACK;
  if (connection >= 0) ::sigaction(SIGSEGV, &action, &previousAction);
}

DisplayLossHandler::~DisplayLossHandler() {
  if (connection >= 0) ::sigaction(SIGSEGV, &previousAction, nullptr);
  connection = -1;
}

}  // namespace forms::qt
