#include "platform/forms/qt/Display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <cstdlib>
#include <cstring>

#include "platform/forms/qt/LibraryFunction.h"
#include "platform/process/StandardStreams.h"

namespace forms::qt {
namespace {

/// Uses the X client library, as the toolkit's X platform does: it knows every form of a display's
/// name, and the access rights.
bool xServerAnswers() {
  if (qgetenv("DISPLAY").isEmpty()) return false;
  struct Connection;
  auto* const connect = libraryFunction<Connection*(const char*, int*)>("xcb", 1, "xcb_connect");
  auto* const hasError = libraryFunction<int(Connection*)>("xcb", 1, "xcb_connection_has_error");
  auto* const disconnect = libraryFunction<void(Connection*)>("xcb", 1, "xcb_disconnect");
  if (connect == nullptr || hasError == nullptr || disconnect == nullptr) return false;
  Connection* connection = connect(nullptr, nullptr);
  const bool answers = hasError(connection) == 0;
  disconnect(connection);
  return answers;
}

bool waylandServerAnswers() {
  QByteArray path = qgetenv("WAYLAND_DISPLAY");
  if (path.isEmpty()) return false;
  if (!path.startsWith('/')) path = qgetenv("XDG_RUNTIME_DIR") + '/' + path;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
  const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (server < 0) return false;
  const bool answers =
      ::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::close(server);
  return answers;
}

}  // namespace

bool displayAvailable() {
  // The toolkit's other platforms, such as the remote and the off-screen one, need no server.
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!platform.isEmpty() && !platform.startsWith("xcb") && !platform.startsWith("wayland"))
    return true;
  return xServerAnswers() || waylandServerAnswers();
}

void endWithoutDisplay() {
  process::writeToStandardError(
      "There is no display on which the program could open its window.\n");
  std::_Exit(1);
}

}  // namespace forms::qt
