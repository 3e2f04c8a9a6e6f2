#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace support {

/// A program folder of its own for one test, below the temporary folder: an empty "Posdata", and a
/// settings folder that stands in for the user's. The program counts as started from here. All of
/// it goes again at the end.
class ProgramFolder {
 public:
  ProgramFolder();
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path posdata() const { return path_ / "Posdata"; }
  /// Where the settings of all applications lie, one file each.
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

/// The bytes of any file; nothing where there is none.
std::optional<std::string> readFile(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, std::string_view bytes);

/// Tests that run as the administrator may write anything; while this lives they are an ordinary
/// user, whom permissions bind. Does nothing for a user who is ordinary already.
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
