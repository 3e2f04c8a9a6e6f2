#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "layoutdata/KeyRecord.h"

namespace files {
class InputFile;
class OutputFile;
}  // namespace files

/// The layout files, opened here and nowhere else. Each is text: a line for each key, in ascending
/// order, every line ended by CR LF, with no header and no comments.
namespace layoutdata {

/// The names of the layout files below the program folder. Loading, saving and reset each have
/// their own literal. The literals differ only in letter case and name the same file; a new file
/// is created with the spelling used for saving.
namespace levelled {
/// Each followed by the level in decimal and ".txt": see `levelFile`.
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers";
inline constexpr std::u16string_view kDelete = u"\\Posdata\\Fastmovers";
}  // namespace levelled

namespace large {
inline constexpr std::u16string_view kRead = u"\\Posdata\\fastmovers.txt";
inline constexpr std::u16string_view kWrite = u"\\Posdata\\FastMovers.txt";
}  // namespace large

/// The path of a level's file, by one of the literals of `levelled`.
std::u16string levelFile(std::u16string_view literal, std::int16_t level);

/// Reads a layout file line by line. The editor decides which fields it applies to a key and how
/// it handles a fault.
class LayoutReader {
 public:
  /// Raises what `files::InputFile` raises.
  explicit LayoutReader(std::u16string_view path);
  ~LayoutReader();

  /// The line of the next key. Raises InputPastEnd past the end of the file, and what
  /// `files::InputFile::lineInput` raises.
  KeyLine next();

 private:
  std::unique_ptr<files::InputFile> file_;
};

/// Writes a layout file line by line. Opening the file discards its old content. Lines are not
/// buffered: after a failure the file has the lines written before it.
class LayoutWriter {
 public:
  /// Raises what `files::OutputFile` raises.
  explicit LayoutWriter(std::u16string_view path);
  ~LayoutWriter();

  /// Nothing is checked or escaped: a comma in a caption shifts the fields when the line is read
  /// back (contract). Raises DiskFull and DeviceIoError.
  void write(const KeyRecord& record);
  /// Raises DeviceIoError or DiskFull, also for an earlier write whose failure the system reports
  /// only now.
  void close();

 private:
  std::unique_ptr<files::OutputFile> file_;
};

}  // namespace layoutdata
