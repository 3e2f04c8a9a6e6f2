#include "platform/forms/qt/WindowManager.h"

#include <QGuiApplication>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/forms/qt/LibraryFunction.h"

namespace forms::qt {
namespace {

/// The numbers of atoms and windows, as the X library has them.
using XId = unsigned long;

/// The connection to the X server; null on another display system. The off-screen platform has the
/// native interface too, but no windows of an X server.
const QNativeInterface::QX11Application* xServer() {
  if (QGuiApplication::platformName() != u"xcb") return nullptr;
  return qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
}

}  // namespace

bool hasWindowManager() {
  // Offset in the reply of the set of events that any program receives for the window. Only a
  // window manager receives requests to change the root window's children.
  constexpr std::size_t kAllEventsOffset = 32;
  constexpr std::uint32_t kSubstructureRedirect = 1U << 20;
  struct Cookie {
    unsigned int sequence;
  };
  if (QGuiApplication::platformName().startsWith(u"wayland")) return true;
  const auto* const server = xServer();
  if (server == nullptr) return false;
  auto* const root = libraryFunction<XId(Display*)>("X11", 6, "XDefaultRootWindow");
  auto* const ask = libraryFunction<Cookie(xcb_connection_t*, std::uint32_t)>(
      "xcb", 1, "xcb_get_window_attributes");
  auto* const answer = libraryFunction<void*(xcb_connection_t*, Cookie, void*)>(
      "xcb", 1, "xcb_get_window_attributes_reply");
  if (root == nullptr || ask == nullptr || answer == nullptr) return true;
  const Cookie request =
      ask(server->connection(), static_cast<std::uint32_t>(root(server->display())));
  void* const reply = answer(server->connection(), request, nullptr);
  if (reply == nullptr) return true;
  std::uint32_t events = 0;
  std::memcpy(&events, static_cast<const unsigned char*>(reply) + kAllEventsOffset, sizeof events);
  std::free(reply);
  return (events & kSubstructureRedirect) != 0;
}

void keepOutOfTaskBars(const QWindow& window) {
  constexpr XId kAtomType = 4;
  constexpr int kBits = 32;
  constexpr int kAppend = 2;
  const auto* const server = xServer();
  if (server == nullptr) return;
  auto* const atom = libraryFunction<XId(Display*, const char*, int)>("X11", 6, "XInternAtom");
  auto* const change = libraryFunction<int(Display*, XId, XId, XId, int, int, const void*, int)>(
      "X11", 6, "XChangeProperty");
  if (atom == nullptr || change == nullptr) return;
  Display* const display = server->display();
  const XId skip = atom(display, "_NET_WM_STATE_SKIP_TASKBAR", 0);
  change(display, window.winId(), atom(display, "_NET_WM_STATE", 0), kAtomType, kBits, kAppend,
         &skip, 1);
}

}  // namespace forms::qt
