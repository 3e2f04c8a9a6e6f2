// A layout file, read line by line and field by field as the editors do. A find is an error other
// than 6, 7, 9, 13 and 62, or a key that reads back differently after it was written.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "layoutdata/KeyRecord.h"
#include "platform/files/InputFile.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/RunTimeError.h"
#include "platform/runtime/Text.h"

namespace {

constexpr int kKeys = 108;

void readAll(std::u16string_view path) {
  files::InputFile file(path);
  for (int key = 0; key < kKeys; ++key) {
    const layoutdata::KeyLine line(file.lineInput());
    layoutdata::KeyRecord record;
    record.Caption = line.Caption();
    record.BackColour = line.BackColour();
    record.ProductId = runtime::trim(line.ProductId());
    static_cast<void>(line.FontColour());
    // The reader reads a record back as the writer wrote it.
    const layoutdata::KeyLine again(layoutdata::toLine(record));
    if (again.Caption() != record.Caption || again.ProductId() != record.ProductId ||
        again.BackColour() != record.BackColour)
      __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("layout-" + std::to_string(getpid()) + ".txt");
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  try {
    readAll(runtime::fromUtf8(file.string()));
  } catch (const runtime::RunTimeError& fault) {
    const auto number = fault.number();
    if (number != 62 && number != 9 && number != 13 && number != 6 && number != 7) __builtin_trap();
  }
  return 0;
}
