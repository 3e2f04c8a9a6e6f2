#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace support {

/// A program folder for one test, below the temporary folder: an empty "Posdata", and a settings
/// folder that replaces the user's. Sets the program file, so that the program takes this as its
/// program folder. The folders are deleted at the end.
class ProgramFolder {
 public:
  ProgramFolder();
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path posdata() const { return path_ / "Posdata"; }
  /// The folder with the settings of all applications, one file each.
  std::filesystem::path settingsFolder() const { return config_ / "program-settings"; }

  /// The bytes of a file at a path below the folder; nothing where there is no file.
  std::optional<std::string> read(const std::filesystem::path& file) const;
  /// Writes a file at a path below the folder, with the folders that it needs.
  void write(const std::filesystem::path& file, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
  std::filesystem::path config_;
  std::optional<std::string> userConfig_;
};

/// The bytes of any file; absent where there is none.
std::optional<std::string> readFile(const std::filesystem::path& file);
/// Writes any file, with the folders that it needs.
void writeFile(const std::filesystem::path& file, std::string_view bytes);
void writeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);

/// While it exists, a test that was started as root runs as an ordinary user, to whom file
/// permissions apply. Does nothing for a test that runs as an ordinary user.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser();
  ~AsOrdinaryUser();
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
  uid_t before_;
};

}  // namespace support
