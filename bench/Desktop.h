#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "Folder.h"

struct xcb_connection_t;

namespace bench {

/// A virtual display with a window manager, whose pixels can be read.
class Desktop {
 public:
  Desktop();
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  /// The environment for a program on this display, without the user's own settings.
  std::vector<std::string> environment() const;

  /// The user's configuration folder in that environment.
  const std::filesystem::path& configuration() const { return folder_.path(); }

  using Pixels = std::vector<std::uint8_t>;
  /// The pixels of these rows of the display, each from the left edge to `width`.
  Pixels rows(const std::vector<std::int16_t>& ys, std::uint16_t width) const;

 private:
  void connect();
  void awaitManager();

  struct Disconnect {
    void operator()(xcb_connection_t* connection) const;
  };
  Folder folder_;
  std::string display_;
  std::unique_ptr<ChildProcess> server_;
  std::unique_ptr<ChildProcess> manager_;
  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  std::uint32_t root_ = 0;
};

/// Waits until the condition holds, checking it each millisecond. After 20 seconds raises an error
/// with the text `what`.
void waitUntil(const std::function<bool()>& condition, const std::string& what);

}  // namespace bench
