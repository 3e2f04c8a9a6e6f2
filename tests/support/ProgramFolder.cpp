#include "support/ProgramFolder.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <system_error>

#include "platform/files/ProgramFolder.h"

namespace support {

namespace fs = std::filesystem;

namespace {

constexpr const char* kConfigVariable = "XDG_CONFIG_HOME";

fs::path newFolder() {
  std::string name = (fs::temp_directory_path() / "program-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category());
  // Open for tests that run as an ordinary user.
  fs::permissions(name, fs::perms::all);
  return name;
}

}  // namespace

ProgramFolder::ProgramFolder() : path_(newFolder()), config_(newFolder()) {
  fs::create_directory(posdata());
  fs::permissions(posdata(), fs::perms::all);
  if (const char* value = ::getenv(kConfigVariable)) userConfig_ = value;
  ::setenv(kConfigVariable, config_.c_str(), 1);
  files::setProgramFile(path_ / "program");
}

ProgramFolder::~ProgramFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  fs::remove_all(config_, ignored);
  if (userConfig_) {
    ::setenv(kConfigVariable, userConfig_->c_str(), 1);
  } else {
    ::unsetenv(kConfigVariable);
  }
}

std::optional<std::string> ProgramFolder::read(const fs::path& file) const {
  return readFile(path_ / file);
}

void ProgramFolder::write(const fs::path& file, std::string_view bytes) const {
  writeFile(path_ / file, bytes);
}

std::optional<std::string> readFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

void writeFile(const fs::path& file, std::string_view bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) throw std::system_error(errno, std::generic_category(), file.string());
}

void writeFile(const fs::path& file, std::span<const std::uint8_t> bytes) {
  writeFile(file, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

AsOrdinaryUser::AsOrdinaryUser() : before_(::geteuid()) {
  constexpr uid_t kNobody = 65534;
  if (before_ == 0 && ::seteuid(kNobody) != 0)
    throw std::system_error(errno, std::generic_category());
}

AsOrdinaryUser::~AsOrdinaryUser() {
  if (::geteuid() != before_ && ::seteuid(before_) != 0) std::abort();
}

}  // namespace support
