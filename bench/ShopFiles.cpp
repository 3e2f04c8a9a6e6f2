#include "ShopFiles.h"

#include <fstream>
#include <stdexcept>

namespace bench {
namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  if (!(stream << bytes).flush()) throw std::runtime_error("can't write " + file.string());
}

std::string layoutOf(int level) {
  constexpr int kColourStep = 0x2A1D0B;
  constexpr int kColours = 0x1000000;
  std::string bytes;
  for (int key = 0; key < kKeys; ++key) {
    const std::string product = std::to_string(kProductsPerLevel * level + key);
    const std::string back = std::to_string((key + 1) * kColourStep % kColours);
    bytes += std::to_string(key) + "," + product + ",Product " + product + "," + back + ",0\r\n";
  }
  return bytes;
}

}  // namespace

void createShop(const fs::path& folder, const makestore::ShopOptions& options) {
  for (int level = 1; level <= kLevels; ++level)
    write(folder / "Posdata" / ("FastMovers" + std::to_string(level) + ".txt"), layoutOf(level));
  write(folder / "Posdata" / "FastTouchButtons.ini",
        "[SETTINGS]\r\nSCREEN1=Drinks\r\nSCREEN2=Food\r\nSCREEN3=Sundries\r\n");
  write(folder / "Posdata" / "Posconfig.ini", "[GENERAL]\r\nLOAD_FASTMOVERS_LARGE=0\r\n");
  const fs::path store = folder / kStore;
  fs::create_directories(store.parent_path());
  makestore::shopStore(options).write(store);
}

void writeSettings(const fs::path& configuration) {
  write(configuration / "program-settings" / "tavenor.ini", "[comms]\nstorename=Demo\n");
}

}  // namespace bench
