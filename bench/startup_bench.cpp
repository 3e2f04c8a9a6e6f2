// Measures the program's start from outside: the time from the start of the process to the first
// frame on the screen, and the memory used by then, against a bare window of the toolkit with as
// many plain buttons and rows. Both run on a virtual display with a window manager, alternating.
//
//   startup_bench [FOLDER]     folder of the built programs, by default the parent of its own

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Desktop.h"
#include "Folder.h"
#include "Measurement.h"
#include "ShopFiles.h"

namespace {

namespace fs = std::filesystem;

constexpr int kProducts = 2000;
constexpr int kRounds = 41;
constexpr double kAim = 1.3;
constexpr const char* kStart = "start to the first frame, 2,000 products, against a bare window";
constexpr const char* kMemory = "peak memory at the first frame, against a bare window";

/// A finished frame is recognised by pixel rows through the captions of the second and the last row
/// of keys, and through the last rows of the list. None of them crosses the focus mark.
const std::vector<std::int16_t> kLines{150, 155, 160, 495, 500, 505, 640, 645, 650};
constexpr std::uint16_t kWidth = 960;

/// A program whose start is measured.
class Start {
 public:
  Start(const bench::Desktop& desktop, std::vector<std::string> arguments)
      : desktop_(desktop), arguments_(std::move(arguments)) {}

  /// Seconds from the start of the process to the complete first frame on the screen.
  double seconds() {
    if (finished_.empty()) finished_ = settled();
    awaitEmptyScreen();
    std::unique_ptr<bench::ChildProcess> program;
    const double seconds = bench::secondsOf([&] {
      program = std::make_unique<bench::ChildProcess>(arguments_, desktop_.environment());
      bench::waitUntil([this] { return look() == finished_; }, "the first frame");
    });
    peaks_.push_back(program->peakMemory());
    return seconds;
  }

  double medianPeak() const { return bench::median(peaks_); }

 private:
  bench::Desktop::Pixels look() const { return desktop_.rows(kLines, kWidth); }

  /// True for the screen without a window, which has one colour.
  static bool isEmptyScreen(const bench::Desktop::Pixels& pixels) {
    return std::ranges::count(pixels, pixels.front()) == std::ssize(pixels);
  }
  void awaitEmptyScreen() const {
    bench::waitUntil([this] { return isEmptyScreen(look()); }, "the empty screen");
  }

  /// The pixels of the screen once they no longer change.
  bench::Desktop::Pixels settled() const {
    constexpr int kStill = 10;
    awaitEmptyScreen();
    const bench::ChildProcess program(arguments_, desktop_.environment());
    bench::Desktop::Pixels shown;
    int still = 0;
    const auto isStill = [&] {
      if (!program.running()) throw std::runtime_error(arguments_[0] + " has ended");
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      const bench::Desktop::Pixels now = look();
      still = now == shown && !isEmptyScreen(now) ? still + 1 : 0;
      shown = now;
      return still == kStill;
    };
    bench::waitUntil(isStill, "a finished window");
    return shown;
  }

  const bench::Desktop& desktop_;
  std::vector<std::string> arguments_;
  bench::Desktop::Pixels finished_;
  std::vector<double> peaks_;
};

void measureStart(const fs::path& programs) {
  const bench::Folder shop;
  makestore::ShopOptions options;
  options.slots = kProducts;
  options.products = kProducts;
  options.free.emplace();
  bench::createShop(shop.path(), options);
  fs::create_symlink(programs / "keystrand", shop / "keystrand");

  const bench::Desktop desktop;
  bench::writeSettings(desktop.configuration());
  Start ours(desktop, {shop / "keystrand"});
  Start peer(desktop, {programs / "bench" / "plain_window", std::to_string(bench::kKeys),
                       std::to_string(kProducts)});
  const bench::Medians took = bench::measure(
      kRounds, [&] { return ours.seconds(); }, [&] { return peer.seconds(); });
  bench::printRow(kStart, bench::milliseconds(took.ours), bench::milliseconds(took.peer),
                  took.ours / took.peer, kAim);
  bench::printRow(kMemory, bench::megabytes(ours.medianPeak()), bench::megabytes(peer.medianPeak()),
                  ours.medianPeak() / peer.medianPeak(), kAim);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    measureStart(count > 1 ? fs::absolute(arguments[1])
                           : fs::read_symlink("/proc/self/exe").parent_path().parent_path());
    return 0;
  } catch (const std::exception& error) {
    for (const char* row : {kStart, kMemory}) bench::printFailure(row, kAim, error.what());
    return 0;
  }
}
