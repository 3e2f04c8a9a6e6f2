// The levelled editor on a slow file server: each read of a file at an offset waits 3 ms. The start
// and a change of the item list's filter, each against reading the store's file in pieces of 64 KB
// with the same wait.

#include <QCheckBox>
#include <QListView>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "ChildProcess.h"
#include "Folder.h"
#include "Measurement.h"
#include "RunningEditor.h"
#include "ShopFiles.h"
#include "makestore/ShopStore.h"
#include "platform/files/ByteFile.h"
#include "platform/files/seam/FaultSeam.h"

namespace {

namespace fs = std::filesystem;
using bench::RunningEditor;

constexpr int kProducts = 45000;
constexpr double kAim = 2;
/// Argument of a child process, which starts the program once and prints the seconds.
constexpr const char* kStartOption = "--start";

void delayReads() {
  files::setFaultSeam([](const files::FileStep& step) {
    constexpr std::chrono::milliseconds kDelay(3);
    if (step.kind == files::FileStep::Kind::Read) std::this_thread::sleep_for(kDelay);
    return step.size;
  });
}

void readInPieces(const fs::path& path) {
  const files::ByteFile file(path, files::ByteFile::Access::ReadOnly);
  std::vector<std::uint8_t> piece(64 * 1024);
  std::uint64_t offset = 0;
  while (const std::size_t count = file.readAt(offset, piece)) offset += count;
}

void expectRows(const RunningEditor& editor) {
  const int rows = editor.control<QListView>("List1").model()->rowCount();
  if (rows != kProducts) throw std::runtime_error(std::to_string(rows) + " rows");
}

double startOnce(const fs::path& shop) {
  RunningEditor editor(shop);
  const double seconds = bench::secondsOf([&] { editor.start(); });
  expectRows(editor);
  return seconds;
}

void measure(const fs::path& shop) {
  const auto readStore = [&] { readInPieces(shop / bench::kStore); };
  bench::compareParts(
      "start with 45,000 products, 3 ms a read, against reading the store in pieces of 64 KB", kAim,
      7, [&] { return bench::numberPrintedByChild(kStartOption, shop); },
      [&] { return bench::secondsOf(readStore); });

  RunningEditor editor(shop);
  editor.start();
  auto& hideBarcodes = editor.control<QCheckBox>("chkBarcode");
  bench::compare(
      "filter change with 45,000 products, 3 ms a read, against the same reading", kAim, 7,
      [&] {
        hideBarcodes.click();
        bench::settle();
      },
      readStore);
}

void createSlowShop(const fs::path& shop) {
  makestore::ShopOptions options;
  options.slots = kProducts;
  options.products = kProducts;
  options.free.emplace();
  options.barcodes = makestore::Barcodes::None;
  bench::createShop(shop, options);
  bench::writeSettings(shop);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    delayReads();
    if (count == 3 && arguments[1] == std::string(kStartOption)) {
      std::cout << startOnce(arguments[2]) << '\n';
      return 0;
    }
    const bench::Folder shop(fs::temp_directory_path());
    createSlowShop(shop.path());
    measure(shop.path());
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "fileserver_bench: " << error.what() << '\n';
    return 1;
  }
}
