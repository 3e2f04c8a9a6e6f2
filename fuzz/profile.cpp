// Profile files: a write changes its own key and nothing else that a read can see.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/profile/IniText.h"
#include "platform/profile/ProfileFile.h"
#include "platform/runtime/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("profile-" + std::to_string(getpid()) + ".ini");
  static const std::u16string path = runtime::fromUtf8(file.string());
  constexpr std::size_t kBuffer = 1024;
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

  const auto read = [](std::string_view section, std::string_view key) {
    return profile::GetPrivateProfileStringA(section, key, "absent", kBuffer, path);
  };
  const std::string other = read("SETTINGS", "AUTOFILL");
  if (other.size() >= kBuffer) __builtin_trap();
  const bool isText = !profile::IniText::isUtf16({reinterpret_cast<const char*>(data), size});
  if (profile::WritePrivateProfileStringA("SETTINGS", "SCREEN1", "Lunch bar", path) != isText)
    __builtin_trap();
  if (!isText) return 0;
  if (read("settings", "screen1") != "Lunch bar" || read("SETTINGS", "AUTOFILL") != other)
    __builtin_trap();
  return 0;
}
