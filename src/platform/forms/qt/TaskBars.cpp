#include "platform/forms/qt/TaskBars.h"

#include <QGuiApplication>
#include <QLibrary>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace forms::qt {
namespace {

// Copies of declarations of the X client library, which the toolkit's X platform has loaded.
struct Cookie {
  unsigned int sequence;
};
struct AtomReply {
  std::uint8_t type;
  std::uint8_t unused;
  std::uint16_t sequence;
  std::uint32_t length;
  std::uint32_t atom;
};
using Connection = xcb_connection_t*;
using InternAtom = Cookie (*)(Connection, std::uint8_t, std::uint16_t, const char*);
using InternAtomReply = AtomReply* (*)(Connection, Cookie, void*);
using ChangeProperty = Cookie (*)(Connection, std::uint8_t, std::uint32_t, std::uint32_t,
                                  std::uint32_t, std::uint8_t, std::uint32_t, const void*);

constexpr std::uint8_t kAppend = 2;
constexpr std::uint32_t kAtomType = 4;
constexpr std::uint8_t kAtomBits = 32;

}  // namespace

void keepOutOfTaskBars(const QWindow& window) {
  // The off-screen platform has the native interface too, but no windows of the X server.
  if (QGuiApplication::platformName() != u"xcb") return;
  const auto* server = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (server == nullptr) return;
  QLibrary library(QStringLiteral("xcb"), 1);
  const auto intern = reinterpret_cast<InternAtom>(library.resolve("xcb_intern_atom"));
  const auto answer = reinterpret_cast<InternAtomReply>(library.resolve("xcb_intern_atom_reply"));
  const auto change = reinterpret_cast<ChangeProperty>(library.resolve("xcb_change_property"));
  if (intern == nullptr || answer == nullptr || change == nullptr) return;
  const Connection connection = server->connection();
  const auto atom = [&](std::string_view name) {
    AtomReply* reply = answer(
        connection, intern(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const std::uint32_t found = reply == nullptr ? 0 : reply->atom;
    std::free(reply);
    return found;
  };
  const std::uint32_t state = atom("_NET_WM_STATE");
  const std::uint32_t skip = atom("_NET_WM_STATE_SKIP_TASKBAR");
  if (state != 0 && skip != 0)
    change(connection, kAppend, static_cast<std::uint32_t>(window.winId()), state, kAtomType,
           kAtomBits, 1, &skip);
}

}  // namespace forms::qt
