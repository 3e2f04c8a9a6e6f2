#include "Desktop.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>

namespace bench {
namespace {

constexpr const char* kScreen = "1920x1080x24";

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

std::string searchPath() {
  const char* const path = std::getenv("PATH");
  return path == nullptr ? "/usr/local/bin:/usr/bin:/bin" : path;
}

std::string readToEnd(int descriptor) {
  std::string text;
  std::array<char, 64> part{};
  for (ssize_t count = 0; (count = ::read(descriptor, part.data(), part.size())) > 0;)
    text.append(part.data(), static_cast<std::size_t>(count));
  return text;
}

}  // namespace

void waitUntil(const std::function<bool()>& condition, const std::string& what) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (Clock::now() > deadline) throw std::runtime_error("waited in vain for " + what);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

void Desktop::Disconnect::operator()(xcb_connection_t* connection) const {
  xcb_disconnect(connection);
}

Desktop::Desktop() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0)
    throw std::system_error(errno, std::generic_category(), "the display's pipe");
  // The server takes the first free display number and writes it to the pipe.
  server_ = std::make_unique<ChildProcess>(
      std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0",
                               kScreen, "-dpi", "96", "-ac", "-nolisten", "tcp", "-noreset"},
      std::vector<std::string>{"PATH=" + searchPath()}, ends[1]);
  ::close(ends[1]);
  const std::string number = readToEnd(ends[0]);
  ::close(ends[0]);
  if (number.empty()) throw std::runtime_error("the virtual display did not start");
  display_ = ":" + number.substr(0, number.find('\n'));
  connect();
  manager_ = std::make_unique<ChildProcess>(std::vector<std::string>{"openbox", "--sm-disable"},
                                            environment());
  awaitManager();
}

Desktop::~Desktop() = default;

std::vector<std::string> Desktop::environment() const {
  const std::string folder = folder_.path();
  return {"PATH=" + searchPath(),
          "HOME=" + folder,
          "XDG_RUNTIME_DIR=" + folder,
          "XDG_CONFIG_HOME=" + folder,
          "DBUS_SESSION_BUS_ADDRESS=disabled:",
          "LC_ALL=C.UTF-8",
          "DISPLAY=" + display_};
}

void Desktop::connect() {
  connection_.reset(xcb_connect(display_.c_str(), nullptr));
  if (xcb_connection_has_error(connection_.get()) != 0)
    throw std::runtime_error("the virtual display does not answer");
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
  // Moves the pointer away from the windows, so that no control shows its hover state.
  constexpr std::int16_t kFar = 4000;
  xcb_warp_pointer(connection_.get(), XCB_NONE, root_, 0, 0, 0, 0, kFar, kFar);
  xcb_flush(connection_.get());
}

void Desktop::awaitManager() {
  constexpr std::string_view kName = "_NET_SUPPORTING_WM_CHECK";
  xcb_connection_t* const connection = connection_.get();
  const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, kName.size(), kName.data()), nullptr));
  if (!atom) throw std::runtime_error("the virtual display does not answer");
  const auto isThere = [&] {
    const Reply<xcb_get_property_reply_t> window(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root_, atom->atom, XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    return window && window->type == XCB_ATOM_WINDOW;
  };
  waitUntil(isThere, "the window manager");
}

Desktop::Pixels Desktop::rows(const std::vector<std::int16_t>& ys, std::uint16_t width) const {
  xcb_connection_t* const connection = connection_.get();
  std::vector<xcb_get_image_cookie_t> asked;
  for (const std::int16_t y : ys)
    asked.push_back(xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, 0, y, width, 1,
                                  ~std::uint32_t{0}));
  Pixels pixels;
  for (const xcb_get_image_cookie_t cookie : asked) {
    const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
    if (!image) throw std::runtime_error("the virtual display shows nothing");
    const std::uint8_t* const data = xcb_get_image_data(image.get());
    pixels.insert(pixels.end(), data, data + xcb_get_image_data_length(image.get()));
  }
  return pixels;
}

}  // namespace bench
